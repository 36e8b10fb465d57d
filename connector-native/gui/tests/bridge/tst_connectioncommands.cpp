#include "support/testprogram.h"
#include "viewmodeltesting.h"

namespace {

using Operation = void (ConnectorViewModel::*)();
using Reader = QString (ConnectorViewModel::*)() const;

} // namespace

class TestConnectionCommands : public QObject
{
    Q_OBJECT

private slots:
    void operationsRunTheirCommands_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QStringList>("titles");

        const QStringList refresh{u"status"_s, u"server-health"_s, u"bind-status"_s, u"status"_s};
        QTest::newRow("refresh") << &ConnectorViewModel::refreshAll << refresh;
        QTest::newRow("server check") << &ConnectorViewModel::checkServer << QStringList{u"server-health"_s};
        QTest::newRow("claim") << &ConnectorViewModel::claimToken
                               << QStringList{u"claim-token"_s, u"status"_s};
        QTest::newRow("unbind") << &ConnectorViewModel::disconnectBinding
                                << QStringList{u"disconnect-binding"_s} + refresh;
        QTest::newRow("update check") << &ConnectorViewModel::checkUpdate << QStringList{u"update-check"_s};
        QTest::newRow("update download")
            << &ConnectorViewModel::downloadUpdate << QStringList{u"update-download"_s};
        QTest::newRow("update apply") << &ConnectorViewModel::applyUpdate << QStringList{u"update-apply"_s};
    }

    void operationsRunTheirCommands()
    {
        QFETCH(Operation, operation);
        QFETCH(QStringList, titles);
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setBindToken(u"T"_s);
        (viewModel.*operation)();
        QList<QStringList> calls;
        for (const QString &title : titles) {
            calls += title == "claim-token"_L1 ? QStringList{title, u"T"_s} : QStringList{title};
        }
        QCOMPARE(titlesOldestFirst(viewModel), titles);
        QCOMPARE(connector.callArguments(), calls);
    }

    void outputsAreKept_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("command");
        QTest::addColumn<Reader>("output");

        QTest::newRow("status") << &ConnectorViewModel::refreshAll << u"status"_s
                                << &ConnectorViewModel::lastStatusOutput;
        QTest::newRow("server-health") << &ConnectorViewModel::checkServer << u"server-health"_s
                                       << &ConnectorViewModel::lastServerOutput;
        QTest::newRow("bind-status") << &ConnectorViewModel::refreshAll << u"bind-status"_s
                                     << &ConnectorViewModel::lastBindingOutput;
        QTest::newRow("claim-token") << &ConnectorViewModel::claimToken << u"claim-token"_s
                                     << &ConnectorViewModel::lastBindingOutput;
        QTest::newRow("disconnect-binding")
            << &ConnectorViewModel::disconnectBinding << u"disconnect-binding"_s
            << &ConnectorViewModel::lastDisconnectOutput;
        QTest::newRow("update-check")
            << &ConnectorViewModel::checkUpdate << u"update-check"_s << &ConnectorViewModel::lastUpdateOutput;
        QTest::newRow("update-download") << &ConnectorViewModel::downloadUpdate << u"update-download"_s
                                         << &ConnectorViewModel::lastUpdateOutput;
        QTest::newRow("update-apply")
            << &ConnectorViewModel::applyUpdate << u"update-apply"_s << &ConnectorViewModel::lastUpdateOutput;
    }

    void outputsAreKept()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, command);
        QFETCH(Reader, output);
        const FakeConnector connector;
        const QString text = u" {\"raw\":1}\r\n\n "_s;
        connector.answer(command, text);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setBindToken(u"T"_s);
        (viewModel.*operation)();
        QCOMPARE((viewModel.*output)(), text);
    }

    void everyBindingCheckIsFollowedByAStatus()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        for (const QString &answer : {pending, u"unpaired"_s, u""_s, authorized}) {
            connector.answer(u"bind-status"_s, answer);
            viewModel.refreshAll();
            QCOMPARE(viewModel.logs()->at(1).title, u"bind-status"_s);
            QCOMPARE(viewModel.logs()->at(0).title, u"status"_s);
        }
        QCOMPARE(viewModel.logs()->count(), 16);
    }

    void laterStatusOfARefreshCounts()
    {
        const FakeConnector connector;
        connector.answer(u"status"_s, u"connector_health=pairing_required"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        connect(&viewModel, &ConnectorViewModel::bindingStatusChanged, this,
                [&] { connector.answer(u"status"_s, u"connector_health=ready"_s); });
        viewModel.refreshAll();
        QCOMPARE(viewModel.logs()->at(3).output, u"connector_health=pairing_required"_s);
        QCOMPARE(viewModel.lastStatusOutput(), u"connector_health=ready"_s);
        QCOMPARE(viewModel.connectorStatus(), u"ready"_s);
    }

    void refreshDerivesTheWords_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("word");
        QTest::addColumn<Reader>("status");

        const auto row = [](const char *name, const QString &command, const QString &output,
                            const QString &word,
                            Reader status) { QTest::newRow(name) << command << output << word << status; };
        const Reader connectorStatus = &ConnectorViewModel::connectorStatus;
        const Reader serverStatus = &ConnectorViewModel::serverStatus;
        const Reader bindingStatus = &ConnectorViewModel::bindingStatus;
        const QString health = u"connector_health="_s;
        row("ready", u"status"_s, health + u"ready"_s, u"ready"_s, connectorStatus);
        row("pairing required", u"status"_s, health + u"pairing_required"_s, u"pairing required"_s,
            connectorStatus);
        row("starting", u"status"_s, QString(), u"starting"_s, connectorStatus);
        row("reachable", u"server-health"_s, uR"("reachable":true)"_s, u"reachable"_s, serverStatus);
        row("unreachable", u"server-health"_s, uR"("reachable":false)"_s, u"unreachable"_s, serverStatus);
        row("unknown", u"server-health"_s, uR"("reachable": true)"_s, u"unknown"_s, serverStatus);
        row("authorized", u"bind-status"_s, authorized, u"authorized"_s, bindingStatus);
        row("bound", u"bind-status"_s, uR"("pairingStatus":"bound")"_s, u"authorized"_s, bindingStatus);
        row("pending", u"bind-status"_s, pending, u"pending signature"_s, bindingStatus);
        row("waiting", u"bind-status"_s, u"token_waiting"_s, u"token waiting"_s, bindingStatus);
        row("session missing", u"bind-status"_s, u"session_missing"_s, u"not bound"_s, bindingStatus);
        row("unpaired", u"bind-status"_s, u"unpaired"_s, u"not bound"_s, bindingStatus);
        row("no binding marker", u"bind-status"_s, QString(), u"not bound"_s, bindingStatus);
    }

    void refreshDerivesTheWords()
    {
        QFETCH(QString, command);
        QFETCH(QString, output);
        QFETCH(Reader, status);
        const FakeConnector connector;
        connector.answer(command, output);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.refreshAll();
        QTEST((viewModel.*status)(), "word");
    }

    void serverCheckTouchesNothingElse()
    {
        const FakeConnector connector;
        connector.answer(u"server-health"_s,
                         uR"({"reachable":true,"x":"pending_signature connector_health=ready"})"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.checkServer();
        QCOMPARE(viewModel.serverStatus(), u"reachable"_s);
        QCOMPARE(viewModel.connectorStatus(), u"unknown"_s);
        QCOMPARE(viewModel.bindingStatus(), u"not bound"_s);
        QVERIFY(!viewModel.isPolling());
    }

    void lastUpdateCommandWins()
    {
        const FakeConnector connector;
        connector.answer(u"update-check"_s, u"version=2"_s);
        connector.answer(u"update-download"_s, u"downloaded"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.checkUpdate();
        viewModel.downloadUpdate();
        QCOMPARE(viewModel.lastUpdateOutput(), u"downloaded"_s);
        QCOMPARE(viewModel.logs()->at(0).output, u"downloaded"_s);
        QCOMPARE(viewModel.logs()->at(1).output, u"version=2"_s);
    }

    void emptyUpdateOutputEmptiesTheProperty()
    {
        const FakeConnector connector;
        connector.answer(u"update-check"_s, u"version=2"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.checkUpdate();
        viewModel.applyUpdate();
        QCOMPARE(viewModel.lastUpdateOutput(), QString());
    }

    void updatesDeriveNothing()
    {
        const FakeConnector connector;
        connector.answer(u"update-apply"_s, u"connector_health=ready \"reachable\":true pending_signature"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.applyUpdate();
        QCOMPARE(viewModel.connectorStatus(), u"unknown"_s);
        QCOMPARE(viewModel.serverStatus(), u"unknown"_s);
        QCOMPARE(viewModel.bindingStatus(), u"not bound"_s);
        QVERIFY(!viewModel.isPolling());
        QCOMPARE(viewModel.logs()->count(), 1);
    }

    void withoutConnectorTheWordsSaySo()
    {
        const QTemporaryDir home;
        const QString text = missingConnectorText(home.path());
        ConnectorViewModel viewModel(placeWithoutConnector(home.path()), endlessPause);
        viewModel.setBindToken(u"T"_s);
        viewModel.claimToken();
        QCOMPARE(viewModel.bindingStatus(), u"claim failed"_s);
        viewModel.disconnectBinding();
        viewModel.checkUpdate();
        QCOMPARE(viewModel.bindToken(), QString());
        QCOMPARE(viewModel.connectorStatus(), u"starting"_s);
        QCOMPARE(viewModel.serverStatus(), u"unknown"_s);
        QCOMPARE(viewModel.bindingStatus(), u"not bound"_s);
        QVERIFY(!viewModel.isPolling());
        for (const QString &output : {viewModel.lastStatusOutput(), viewModel.lastServerOutput(),
                                      viewModel.lastBindingOutput(), viewModel.lastDisconnectOutput(),
                                      viewModel.lastUpdateOutput(), viewModel.logs()->at(7).output}) {
            QCOMPARE(output, text);
        }
    }
};

static const TestClass<TestConnectionCommands> testConnectionCommands("tst_connectioncommands");

#include "tst_connectioncommands.moc"
