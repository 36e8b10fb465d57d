#include "support/testprogram.h"
#include "windowtest.h"

using namespace Qt::StringLiterals;

namespace {

const auto serverAnswer = u"{\"reachable\":true,\"latencyMs\":18,\"protocol\":\"v1\"}\n"_s;
constexpr QChar replacement(0xfffd);

} // namespace

/// A connector that misbehaves must not take the window with it: each fault shows in the log, changes no more
/// than the words it concerns, and is over when the connector is well again.
class TestFaultyConnector : public WindowTest
{
    Q_OBJECT

    /// The log entry that a click on "Check server" makes.
    [[nodiscard]] LogEntry checkServer() const
    {
        const auto callsBefore = application().calls().size();
        if (!window().clickButton(u"Check server"_s)
            || !QTest::qWaitFor([&] { return application().calls().size() > callsBefore; }))
            return {};
        return window().newestLogEntry();
    }

    void isWellAgain()
    {
        QVERIFY(application().setFaults(""));
        QVERIFY(window().clickButton(u"Refresh all"_s));
        QTRY_COMPARE(window().tiles(),
                     QStringList({u"Connector"_s, u"pairing required"_s, u"Server"_s, u"reachable"_s,
                                  u"Binding"_s, u"not bound"_s}));
        QTRY_COMPARE(window().newestLogEntry().title, u"status"_s);
        QCOMPARE(application().calls().constLast(), QStringList({u"status"_s}));
    }

private slots:
    void init() override
    {
        WindowTest::init();
        openLog();
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
        QVERIFY(application().setFaults(faults));
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
        QVERIFY(application().setFaults("FLOOD_BYTES=" + QByteArray::number(bytes) + '\n'));
        const LogEntry entry = checkServer();
        QCOMPARE(entry.output.size(), bytes);
        QVERIFY(!entry.output.contains(replacement));
        QCOMPARE(window().tileWord(u"Server"_s), u"unknown"_s);
        isWellAgain();
    }

    void takesSilenceForNoKnowledge()
    {
        QVERIFY(application().setFaults("SILENT=1\n"));
        QVERIFY(window().clickButton(u"Refresh all"_s));
        QTRY_COMPARE(application().calls().size(), startupCalls + 4);
        QTRY_COMPARE(window().tiles(),
                     QStringList({u"Connector"_s, u"starting"_s, u"Server"_s, u"unknown"_s, u"Binding"_s,
                                  u"not bound"_s}));
        QCOMPARE(window().newestLogEntry(), (LogEntry{u"status"_s, QString()}));
        isWellAgain();
    }

    void readsThroughBytesThatAreNoText()
    {
        QVERIFY(application().setFaults("INVALID_UTF8=1\n"));
        const LogEntry entry = checkServer();
        QVERIFY2(entry.output.startsWith(serverAnswer), qPrintable(entry.output));
        QVERIFY(entry.output.endsWith(replacement));
        QCOMPARE(window().tileWord(u"Server"_s), u"reachable"_s);
        isWellAgain();
    }

    void doesNotJudgeByTheExitStatus()
    {
        QVERIFY(application().setFaults("EXIT_CODE=255\n"));
        QCOMPARE(checkServer().output, serverAnswer);
        QCOMPARE(window().tileWord(u"Server"_s), u"reachable"_s);
    }

    void noticesAConnectorThatGoesAndComesBack()
    {
        QVERIFY(application().removeConnector());
        QVERIFY(window().clickButton(u"Refresh all"_s));
        QTRY_COMPARE(window().tileWord(u"Connector"_s), u"starting"_s);
        QCOMPARE(window().tileWord(u"Server"_s), u"unknown"_s);
        const LogEntry entry = window().newestLogEntry();
        QCOMPARE(entry.title, u"status"_s);
        QVERIFY2(entry.output.startsWith(u"failed to run connector: "_s), qPrintable(entry.output));
        QCOMPARE(application().calls().size(), startupCalls);

        QVERIFY(application().installSimulator());
        QVERIFY(window().clickButton(u"Refresh all"_s));
        QTRY_COMPARE(window().tileWord(u"Connector"_s), u"pairing required"_s);
        QCOMPARE(window().tileWord(u"Server"_s), u"reachable"_s);
        QCOMPARE(application().calls().size(), startupCalls + 4);
    }

    void waitsForASlowConnectorAndThenServesTheNextClick()
    {
        QVERIFY(application().setFaults("DELAY_MS=700\n"));
        QVERIFY(window().clickButton(u"Check server"_s));
        QTRY_COMPARE(application().calls().size(), startupCalls + 1);
        QVERIFY(application().setFaults(""));
        QVERIFY(window().clickButton(u"Check for updates"_s));
        QTRY_COMPARE(application().calls().mid(startupCalls),
                     QList<QStringList>({{u"server-health"_s}, {u"update-check"_s}}));
    }
};

static const TestClass<TestFaultyConnector> testFaultyConnector("tst_faulty_connector");

#include "tst_faulty_connector.moc"
