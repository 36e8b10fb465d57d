#include "application.h"
#include "mainwindow.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int startupCalls = 9;
const auto serverAnswer = u"{\"reachable\":true,\"latencyMs\":18,\"protocol\":\"v1\"}\n"_s;
constexpr QChar replacement(0xfffd);

} // namespace

/// A connector that misbehaves must not take the window with it: each fault shows in the log, changes no more
/// than the words it concerns, and is over when the connector is well again.
class FaultyConnectorTest : public QObject
{
    Q_OBJECT

    /// The log entry that a click on "Check server" makes.
    [[nodiscard]] LogEntry checkServer() const
    {
        const auto callsBefore = m_application->calls().size();
        if (!m_window->clickButton(u"Check server"_s)
            || !QTest::qWaitFor([&] { return m_application->calls().size() > callsBefore; }))
            return {};
        return m_window->newestLogEntry();
    }

    void isWellAgain()
    {
        QVERIFY(m_application->setFaults(""));
        QVERIFY(m_window->clickButton(u"Refresh all"_s));
        QTRY_COMPARE(m_window->tiles(),
                     QStringList({u"Connector"_s, u"pairing required"_s, u"Server"_s, u"reachable"_s,
                                  u"Binding"_s, u"not bound"_s}));
        QTRY_COMPARE(m_window->newestLogEntry().title, u"status"_s);
        QCOMPARE(m_application->calls().constLast(), QStringList({u"status"_s}));
    }

    std::unique_ptr<Application> m_application;
    std::unique_ptr<MainWindow> m_window;

private slots:
    void initTestCase() { QVERIFY(enableAccessibility()); }

    void init()
    {
        m_application = std::make_unique<Application>();
        QVERIFY(m_application->installSimulator());
        QVERIFY(m_application->start());
        m_window = std::make_unique<MainWindow>(*m_application);
        QTRY_COMPARE(m_application->calls().size(), startupCalls);
        QVERIFY(m_window->clickButton(u"Open technical log"_s));
        QTRY_VERIFY(!m_window->newestLogEntry().title.isEmpty());
    }

    void keepsWhatADyingConnectorHasPrinted_data()
    {
        QTest::addColumn<QByteArray>("faults");
        QTest::newRow("killed") << QByteArray("SIGNAL=9\n");
        QTest::newRow("crashed") << QByteArray("SIGNAL=11\n");
        QTest::newRow("aborted") << QByteArray("SIGNAL=6\n");
        QTest::newRow("broken pipe") << QByteArray("SIGNAL=13\n");
    }

    void keepsWhatADyingConnectorHasPrinted()
    {
        QFETCH(const QByteArray, faults);
        QVERIFY(m_application->setFaults(faults));
        const LogEntry entry = checkServer();
        QVERIFY(!entry.output.isEmpty());
        QVERIFY(entry.output.size() < serverAnswer.size());
        QVERIFY2(serverAnswer.startsWith(entry.output), qPrintable(entry.output));
        isWellAgain();
    }

    void showsAFloodWhole_data()
    {
        QTest::addColumn<int>("bytes");
        QTest::newRow("more than an ordinary pipe holds") << 65537;
        QTest::newRow("as much as the largest pipe holds") << 1048576;
    }

    void showsAFloodWhole()
    {
        QFETCH(const int, bytes);
        QVERIFY(m_application->setFaults("FLOOD_BYTES=" + QByteArray::number(bytes) + '\n'));
        const LogEntry entry = checkServer();
        QCOMPARE(entry.output.size(), bytes);
        QVERIFY(!entry.output.contains(replacement));
        QCOMPARE(m_window->tileWord(u"Server"_s), u"unknown"_s);
        isWellAgain();
    }

    void takesSilenceForNoKnowledge()
    {
        QVERIFY(m_application->setFaults("SILENT=1\n"));
        QVERIFY(m_window->clickButton(u"Refresh all"_s));
        QTRY_COMPARE(m_application->calls().size(), startupCalls + 4);
        QTRY_COMPARE(m_window->tiles(),
                     QStringList({u"Connector"_s, u"starting"_s, u"Server"_s, u"unknown"_s, u"Binding"_s,
                                  u"not bound"_s}));
        QCOMPARE(m_window->newestLogEntry(), (LogEntry{u"status"_s, QString()}));
        isWellAgain();
    }

    void readsThroughBytesThatAreNoText()
    {
        QVERIFY(m_application->setFaults("INVALID_UTF8=1\n"));
        const LogEntry entry = checkServer();
        QVERIFY2(entry.output.startsWith(serverAnswer), qPrintable(entry.output));
        QVERIFY(entry.output.endsWith(replacement));
        QCOMPARE(m_window->tileWord(u"Server"_s), u"reachable"_s);
        isWellAgain();
    }

    void doesNotJudgeByTheExitStatus()
    {
        QVERIFY(m_application->setFaults("EXIT_CODE=255\n"));
        QCOMPARE(checkServer().output, serverAnswer);
        QCOMPARE(m_window->tileWord(u"Server"_s), u"reachable"_s);
    }

    void noticesAConnectorThatGoesAndComesBack()
    {
        QVERIFY(m_application->removeConnector());
        QVERIFY(m_window->clickButton(u"Refresh all"_s));
        QTRY_COMPARE(m_window->tileWord(u"Connector"_s), u"starting"_s);
        QCOMPARE(m_window->tileWord(u"Server"_s), u"unknown"_s);
        const LogEntry entry = m_window->newestLogEntry();
        QCOMPARE(entry.title, u"status"_s);
        QVERIFY2(entry.output.startsWith(u"failed to run connector: "_s), qPrintable(entry.output));
        QCOMPARE(m_application->calls().size(), startupCalls);

        QVERIFY(m_application->installSimulator());
        QVERIFY(m_window->clickButton(u"Refresh all"_s));
        QTRY_COMPARE(m_window->tileWord(u"Connector"_s), u"pairing required"_s);
        QCOMPARE(m_window->tileWord(u"Server"_s), u"reachable"_s);
        QCOMPARE(m_application->calls().size(), startupCalls + 4);
    }

    void waitsForASlowConnectorAndThenServesTheNextClick()
    {
        QVERIFY(m_application->setFaults("DELAY_MS=700\n"));
        QVERIFY(m_window->clickButton(u"Check server"_s));
        QTRY_COMPARE(m_application->calls().size(), startupCalls + 1);
        QVERIFY(m_application->setFaults(""));
        QVERIFY(m_window->clickButton(u"Check for updates"_s));
        QTRY_COMPARE(m_application->calls().mid(startupCalls),
                     QList<QStringList>({{u"server-health"_s}, {u"update-check"_s}}));
    }

    void cleanup()
    {
        QVERIFY(m_application->isRunning());
        QCOMPARE(m_application->printed(), QByteArray());
        m_window.reset();
        m_application.reset();
    }
};

QTEST_GUILESS_MAIN(FaultyConnectorTest)
#include "tst_faulty_connector.moc"
