#include "pollingtesting.h"
#include "support/testprogram.h"

#include <QPointer>

#include <utility>

using namespace std::chrono_literals;

class TestStatusPolling : public QObject
{
    Q_OBJECT

private slots:
    void firstRoundWaitsForTheStarterToReturn()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.startStatusPolling();
        QVERIFY(viewModel.isPolling());
        QCOMPARE(viewModel.logs()->count(), 0);
        viewModel.checkUpdate();
        QTRY_COMPARE(titlesOldestFirst(viewModel), QStringList{u"update-check"_s} + oneRound);
    }

    void roundIsARefreshAndThenAPause()
    {
        const FakeConnector connector;
        connector.answer(u"status"_s, u"connector_health=ready"_s);
        connector.answer(u"server-health"_s, uR"("reachable":true)"_s);
        connector.answer(u"bind-status"_s, pending);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.startStatusPolling();
        QTRY_COMPARE(rounds(viewModel), 1);
        runDueEvents();
        QCOMPARE(titlesOldestFirst(viewModel), oneRound);
        QCOMPARE(viewModel.connectorStatus(), u"ready"_s);
        QCOMPARE(viewModel.serverStatus(), u"reachable"_s);
        QCOMPARE(viewModel.bindingStatus(), u"pending signature"_s);
        QVERIFY(viewModel.isPolling());
    }

    void startingTwiceMakesOneTask()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, pending);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.startStatusPolling();
        viewModel.startStatusPolling();
        QCOMPARE(tasks(viewModel).size(), 1);
        QTRY_VERIFY(rounds(viewModel) > 0);
        viewModel.startStatusPolling();
        runDueEvents();
        QCOMPARE(rounds(viewModel), 1);
        QCOMPARE(tasks(viewModel).size(), 1);
    }

    void bindingDecidesAboutPolling_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("startedBefore");
        QTest::addColumn<bool>("pollsAfter");

        const std::pair<const char *, QString> stopping[] = {
            {"authorized", authorized},
            {"bound", uR"("pairingStatus":"bound")"_s},
            {"bound in another bind state", uR"({"bindState":"x","pairingStatus":"bound"})"_s},
            {"authorized although pending", authorized + pending},
            {"waiting", u"token_waiting"_s},
            {"session missing", u"session_missing"_s},
            {"unpaired", u"unpaired"_s},
            {"no marker", u"{}"_s},
            {"nothing printed", u""_s},
        };
        for (const auto &[name, answer] : stopping) {
            QTest::addRow("%s stops a running task", name) << answer << true << false;
            QTest::addRow("%s leaves an idle model idle", name) << answer << false << false;
        }
        QTest::newRow("pending starts a task when idle") << pending << false << true;
        QTest::newRow("pending leaves a running task alone") << pending << true << true;
    }

    void bindingDecidesAboutPolling()
    {
        QFETCH(QString, answer);
        QFETCH(bool, startedBefore);
        QFETCH(bool, pollsAfter);
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, answer);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        if (startedBefore) {
            viewModel.startStatusPolling();
        }
        const QPointer<StatusPollTask> before = tasks(viewModel).value(0);
        viewModel.refreshAll();
        QCOMPARE(viewModel.isPolling(), pollsAfter);
        runDueEvents();
        QCOMPARE(tasks(viewModel).size(), pollsAfter ? 1 : 0);
        QVERIFY(!before || tasks(viewModel).contains(before));
        QCOMPARE(rounds(viewModel), pollsAfter ? 2 : 1);
    }

    void pollingEndsWhenTheSignatureIsThere()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, pending);
        ConnectorViewModel viewModel(connector.place(), 2ms);
        viewModel.startStatusPolling();
        const QPointer<StatusPollTask> task = tasks(viewModel).value(0);
        QTRY_VERIFY(rounds(viewModel) >= 2);
        connector.answer(u"bind-status"_s, authorized);
        const qsizetype roundsBefore = rounds(viewModel);
        QTRY_VERIFY(!viewModel.isPolling());
        QTRY_VERIFY(!task);
        QCOMPARE(rounds(viewModel), roundsBefore + 1);
        QCOMPARE(viewModel.bindingStatus(), u"authorized"_s);
    }

    void claimStartsPolling_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::newRow("pending") << pending;
        QTest::newRow("claimed") << uR"("status":"ok")"_s;
        QTest::newRow("failed") << u"no"_s;
    }

    void claimStartsPolling()
    {
        QFETCH(QString, answer);
        const FakeConnector connector;
        connector.answer(u"claim-token"_s, answer);
        ConnectorViewModel viewModel(connector.place(), 2ms);
        viewModel.setBindToken(u"T"_s);
        viewModel.claimToken();
        QVERIFY(viewModel.isPolling());
        const QPointer<StatusPollTask> task = tasks(viewModel).value(0);
        viewModel.claimToken();
        QCOMPARE(tasks(viewModel), QList<StatusPollTask *>({task}));
        QTRY_VERIFY(!task);
        QVERIFY(!viewModel.isPolling());
        QCOMPARE(rounds(viewModel), 1);
    }

    void stoppedBeforeTheFirstRound()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), 1ms);
        viewModel.startStatusPolling();
        const QPointer<StatusPollTask> task = tasks(viewModel).value(0);
        viewModel.stopStatusPolling();
        QVERIFY(!viewModel.isPolling());
        QTRY_VERIFY(!task);
        QCOMPARE(connector.callArguments(), QList<QStringList>());
    }

    void stoppedDuringThePause()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, pending);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.startStatusPolling();
        const QPointer<StatusPollTask> task = tasks(viewModel).value(0);
        QTRY_COMPARE(rounds(viewModel), 1);
        viewModel.stopStatusPolling();
        QVERIFY(!viewModel.isPolling());
        QTRY_VERIFY(!task);
        QCOMPARE(rounds(viewModel), 1);
    }

    void stoppingWhileIdleDoesNothing()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.stopStatusPolling();
        QVERIFY(!viewModel.isPolling());
        viewModel.startStatusPolling();
        QVERIFY(viewModel.isPolling());
    }

    void restartDuringThePauseStartsARoundAtOnce()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, pending);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.startStatusPolling();
        QTRY_COMPARE(rounds(viewModel), 1);
        viewModel.stopStatusPolling();
        viewModel.startStatusPolling();
        QTRY_COMPARE(rounds(viewModel), 2);
        runDueEvents();
        QCOMPARE(tasks(viewModel).size(), 1);
        QCOMPARE(rounds(viewModel), 2);
    }

    void withoutConnectorPollingEnds()
    {
        const QTemporaryDir home;
        ConnectorViewModel viewModel(placeWithoutConnector(home.path()), 1ms);
        viewModel.startStatusPolling();
        const QPointer<StatusPollTask> task = tasks(viewModel).value(0);
        QTRY_VERIFY(!task);
        QCOMPARE(titlesOldestFirst(viewModel), oneRound);
        QCOMPARE(viewModel.bindingStatus(), u"not bound"_s);
        QVERIFY(!viewModel.isPolling());
    }
};

static const TestClass<TestStatusPolling> testStatusPolling("tst_statuspolling");

#include "tst_statuspolling.moc"
