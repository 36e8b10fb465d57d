#include "pollingtesting.h"
#include "support/testprogram.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTimer>

#include <algorithm>
#include <limits>

using namespace std::chrono_literals;

namespace {

// When each entry was logged, in milliseconds.
class LogClock
{
public:
    explicit LogClock(const ConnectorViewModel &viewModel)
    {
        m_clock.start();
        QObject::connect(&viewModel, &ConnectorViewModel::logsChanged, &m_context,
                         [this] { m_logged += m_clock.elapsed(); });
    }

    // From the end of one round to the first entry of the next one.
    [[nodiscard]] qint64 shortestPause() const
    {
        qint64 shortest = std::numeric_limits<qint64>::max();
        for (qsizetype first = oneRound.size(); first < m_logged.size(); first += oneRound.size()) {
            shortest = std::min(shortest, m_logged.at(first) - m_logged.at(first - 1));
        }
        return shortest;
    }

private:
    QElapsedTimer m_clock;
    QList<qint64> m_logged;
    QObject m_context;
};

} // namespace

class TestPollingRounds : public QObject
{
    Q_OBJECT

private slots:
    void roundsGoOnWhileASignatureIsPending()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, pending);
        ConnectorViewModel viewModel(connector.place(), 2ms);
        viewModel.startStatusPolling();
        const QPointer<StatusPollTask> task = tasks(viewModel).value(0);
        QTRY_VERIFY(rounds(viewModel) >= 4);
        viewModel.stopStatusPolling();
        QCOMPARE(titlesOldestFirst(viewModel).size(), 4 * rounds(viewModel));
        for (int first = 0; first < viewModel.logs()->count(); first += 4) {
            QCOMPARE(titlesOldestFirst(viewModel).sliced(first, 4), oneRound);
        }
        QVERIFY(task);
        QCOMPARE(tasks(viewModel), QList<StatusPollTask *>({task}));
    }

    void taskStoppedInItsOwnRoundFinishesIt()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, authorized);
        ConnectorViewModel viewModel(connector.place(), 1ms);
        viewModel.startStatusPolling();
        const QPointer<StatusPollTask> task = tasks(viewModel).value(0);
        connect(&viewModel, &ConnectorViewModel::serverStatusChanged, &viewModel,
                &ConnectorViewModel::stopStatusPolling);
        QTRY_VERIFY(!task);
        QCOMPARE(titlesOldestFirst(viewModel), oneRound);
        QVERIFY(!viewModel.isPolling());
    }

    // The stopped task is still busy with its round when its successor is made.
    void restartWithinARoundDoesNotInterfere()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, pending);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.startStatusPolling();
        const QPointer<StatusPollTask> first = tasks(viewModel).value(0);
        const auto stopOnce = connect(
            &viewModel, &ConnectorViewModel::serverStatusChanged, this,
            [&] {
                viewModel.stopStatusPolling();
                QVERIFY(!viewModel.isPolling());
            },
            Qt::SingleShotConnection);
        QVERIFY(stopOnce);
        QTRY_VERIFY(!first);
        QVERIFY(viewModel.isPolling());
        QCOMPARE(tasks(viewModel).size(), 1);
        QTRY_COMPARE(rounds(viewModel), 2);
        runDueEvents();
        QCOMPARE(titlesOldestFirst(viewModel), oneRound + oneRound);
        QVERIFY(viewModel.isPolling());
    }

    void unbindingWhilePendingStartsAFreshTask()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, pending);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.startStatusPolling();
        const QPointer<StatusPollTask> first = tasks(viewModel).value(0);
        QTRY_COMPARE(rounds(viewModel), 1);
        viewModel.disconnectBinding();
        QVERIFY(viewModel.isPolling());
        QTRY_VERIFY(!first);
        QCOMPARE(tasks(viewModel).size(), 1);
        QTRY_COMPARE(rounds(viewModel), 3);
        runDueEvents();
        QCOMPARE(titlesOldestFirst(viewModel),
                 oneRound + QStringList{u"disconnect-binding"_s} + oneRound + oneRound);
    }

    void startUpLeavesNoTaskOnceAuthorized()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, authorized);
        ConnectorViewModel viewModel(connector.place(), 1ms);
        viewModel.refreshAll();
        viewModel.startStatusPolling();
        viewModel.loadSelectedExchangeCredentials();
        const QPointer<StatusPollTask> task = tasks(viewModel).value(0);
        QVERIFY(task);
        QTRY_VERIFY(!task);
        QVERIFY(!viewModel.isPolling());
        QCOMPARE(titlesOldestFirst(viewModel),
                 oneRound + QStringList{u"load-credentials Bybit"_s} + oneRound);
    }

    void startUpWhilePendingMakesOneTask()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, pending);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.refreshAll();
        QVERIFY(viewModel.isPolling());
        viewModel.startStatusPolling();
        viewModel.loadSelectedExchangeCredentials();
        QCOMPARE(tasks(viewModel).size(), 1);
        QTRY_COMPARE(rounds(viewModel), 2);
        runDueEvents();
        QCOMPARE(titlesOldestFirst(viewModel),
                 oneRound + QStringList{u"load-credentials Bybit"_s} + oneRound);
    }

    // With no pause at all, a round is due at every moment of a button's operation.
    void roundsNeverOverlapAButton()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, pending);
        connector.answer(u"validate"_s, u"status=valid_read_only"_s);
        ConnectorViewModel viewModel(connector.place(), 0ms);
        QTimer button;
        button.callOnTimeout(&viewModel, &ConnectorViewModel::validateSelectedExchange);
        button.start(0);
        viewModel.startStatusPolling();
        QTRY_VERIFY(rounds(viewModel) >= 3 && titlesOldestFirst(viewModel).count(u"balance Bybit"_s) >= 3);
        button.stop();
        viewModel.stopStatusPolling();
        static const QRegularExpression wholeBlocks(
            u"^(status, server-health, bind-status, status, |validate Bybit, balance Bybit, )*$"_s);
        const QString titles = titlesOldestFirst(viewModel).join(u", "_s) + u", "_s;
        QVERIFY2(wholeBlocks.match(titles).hasMatch(), qPrintable(titles));
    }

    void pauseLastsFromRoundToRound()
    {
        constexpr qint64 pause = 150;
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, pending);
        ConnectorViewModel viewModel(connector.place(), std::chrono::milliseconds(pause));
        const LogClock clock(viewModel);
        viewModel.startStatusPolling();
        QTRY_VERIFY_WITH_TIMEOUT(rounds(viewModel) >= 5, 30'000);
        QVERIFY(QElapsedTimer::isMonotonic());
        QVERIFY2(clock.shortestPause() >= pause - 1, qPrintable(QString::number(clock.shortestPause())));
        QVERIFY2(clock.shortestPause() < 2 * pause, qPrintable(QString::number(clock.shortestPause())));
    }

    // A model that is told nothing looks for the connector below the user's home and pauses as users see it.
    void standardPauseIsThreeSeconds()
    {
        const FakeConnector connector;
        connector.answer(u"bind-status"_s, pending);
        const QTemporaryDir home;
        const QString parent = home.path() + u"/.tidewell/workspace/brindlecove/connector-native"_s;
        QVERIFY(QDir().mkpath(parent));
        QVERIFY(QFile::link(connector.directory(), parent + u"/build"_s));
        const auto restore = qScopeGuard([before = qgetenv("HOME")] { qputenv("HOME", before); });
        qputenv("HOME", home.path().toUtf8());
        ConnectorViewModel viewModel;
        const LogClock clock(viewModel);
        viewModel.startStatusPolling();
        QTRY_COMPARE_WITH_TIMEOUT(rounds(viewModel), 2, 10'000);
        QCOMPARE(viewModel.bindingStatus(), u"pending signature"_s);
        QVERIFY2(clock.shortestPause() >= 2'999, qPrintable(QString::number(clock.shortestPause())));
        QVERIFY2(clock.shortestPause() < 4'500, qPrintable(QString::number(clock.shortestPause())));
    }
};

static const TestClass<TestPollingRounds> testPollingRounds("tst_pollingrounds");

#include "tst_pollingrounds.moc"
