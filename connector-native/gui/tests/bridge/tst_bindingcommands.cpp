#include "support/testprogram.h"
#include "viewmodeltesting.h"

class TestBindingCommands : public QObject
{
    Q_OBJECT

private slots:
    void emptyTokenIsNotClaimed()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.claimToken();
        QCOMPARE(viewModel.logs()->count(), 0);
        QCOMPARE(connector.callArguments(), QList<QStringList>());
        QCOMPARE(viewModel.bindingStatus(), u"not bound"_s);
        QVERIFY(!viewModel.isPolling());
    }

    void tokenIsClaimedAsTyped_data()
    {
        QTest::addColumn<QString>("token");

        QTest::newRow("a word") << u"abc123"_s;
        QTest::newRow("blanks only") << u"  "_s;
        QTest::newRow("blanks around") << u" a b "_s;
        QTest::newRow("quotes") << u"'a\"b'"_s;
        QTest::newRow("shell syntax") << u"$(id); `id` | *"_s;
        QTest::newRow("leading dash") << u"--help"_s;
        QTest::newRow("Unicode") << u"ü€😀"_s;
    }

    void tokenIsClaimedAsTyped()
    {
        QFETCH(QString, token);
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setBindToken(token);
        viewModel.claimToken();
        QCOMPARE(connector.callArguments(),
                 QList({QStringList{u"claim-token"_s, token}, QStringList{u"status"_s}}));
        QCOMPARE(viewModel.bindToken(), token);
    }

    void claimDerivesTheWord_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("word");
        QTest::newRow("pending") << pending << u"pending signature"_s;
        QTest::newRow("ok") << uR"({"status":"ok"})"_s << u"claimed"_s;
        QTest::newRow("both") << uR"({"status":"ok"} pending_signature)"_s << u"pending signature"_s;
        QTest::newRow("neither") << uR"({"status":"error"})"_s << u"claim failed"_s;
        QTest::newRow("nothing printed") << QString() << u"claim failed"_s;
    }

    void claimDerivesTheWord()
    {
        QFETCH(QString, output);
        const FakeConnector connector;
        connector.answer(u"claim-token"_s, output);
        connector.answer(u"status"_s, u"connector_health=pairing_required"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setBindToken(u"T"_s);
        viewModel.claimToken();
        QTEST(viewModel.bindingStatus(), "word");
        QCOMPARE(viewModel.connectorStatus(), u"pairing required"_s);
        QCOMPARE(viewModel.bindToken(), u"T"_s);
        QVERIFY(viewModel.isPolling());
    }

    void tokenWithNulIsNotClaimed()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setBindToken(u"a\0b"_s);
        viewModel.claimToken();
        QCOMPARE(viewModel.bindingStatus(), u"claim failed"_s);
        QCOMPARE(viewModel.lastBindingOutput(),
                 failureText(u"the path or an argument contains a NUL character"_s, connector.program()));
        QCOMPARE(connector.callArguments(), QList({QStringList{u"status"_s}}));
    }

    void unbindingResetsBeforeItRefreshes()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, pending);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.refreshAll();
        viewModel.setBindToken(u"T"_s);
        QStringList atEachEntry;
        connect(&viewModel, &ConnectorViewModel::logsChanged, this, [&] {
            atEachEntry +=
                QStringList{viewModel.logs()->at(0).title, viewModel.bindingStatus(), viewModel.bindToken(),
                            viewModel.isPolling() ? u"polling"_s : u"idle"_s}
                    .join(u", "_s);
        });
        viewModel.disconnectBinding();
        QCOMPARE(atEachEntry.size(), 5);
        QCOMPARE(atEachEntry.at(0), u"disconnect-binding, pending signature, T, polling"_s);
        QCOMPARE(atEachEntry.at(1), u"status, not bound, , idle"_s);
        QCOMPARE(atEachEntry.at(2), u"server-health, not bound, , idle"_s);
        QCOMPARE(atEachEntry.at(3), u"bind-status, not bound, , idle"_s);
        QCOMPARE(atEachEntry.at(4), u"status, pending signature, , polling"_s);
    }

    void unbindingTakesWhatTheRefreshFinds_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("word");
        QTest::addColumn<bool>("polls");
        QTest::newRow("no binding left") << u"unpaired"_s << u"not bound"_s << false;
        QTest::newRow("still bound") << uR"("pairingStatus":"bound")"_s << u"authorized"_s << false;
        QTest::newRow("signature still pending") << pending << u"pending signature"_s << true;
    }

    // The answer to the unbinding itself is not looked at, whatever it says.
    void unbindingTakesWhatTheRefreshFinds()
    {
        QFETCH(QString, output);
        QFETCH(bool, polls);
        const FakeConnector connector;
        connector.answer(u"disconnect-binding"_s, uR"({"status":"error","bindState":"authorized"})"_s);
        connector.answer(u"bind-status"_s, output);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setBindToken(u"T"_s);
        viewModel.disconnectBinding();
        QTEST(viewModel.bindingStatus(), "word");
        QCOMPARE(viewModel.bindToken(), QString());
        QCOMPARE(viewModel.isPolling(), polls);
        QCOMPARE(viewModel.lastDisconnectOutput(), uR"({"status":"error","bindState":"authorized"})"_s);
    }
};

static const TestClass<TestBindingCommands> testBindingCommands("tst_bindingcommands");

#include "tst_bindingcommands.moc"
