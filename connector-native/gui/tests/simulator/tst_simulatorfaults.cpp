#include "simulatorrunner.h"
#include "support/testprogram.h"

#include <QElapsedTimer>
#include <QStringDecoder>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

const QStringList server = {u"server-health"_s};
const QByteArray reachable = R"("reachable":true)";

} // namespace

/// Everything that can be made to go wrong, from the environment and from the faults file.
class TestSimulatorFaults : public QObject
{
    Q_OBJECT

private slots:
    void delayComesBeforeTheAnswer()
    {
        SimulatorRunner simulator;
        simulator.set("DELAY_MS", u"120"_s);
        QElapsedTimer timer;
        timer.start();
        QVERIFY(simulator.output(server).contains(reachable));
        QVERIFY(timer.elapsed() >= 120);
    }

    void callIsRecordedBeforeTheDelay()
    {
        const SimulatorRunner simulator;
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"BRINDLECOVE_SIMULATOR_STATE"_s, simulator.filePath(""));
        environment.insert(u"BRINDLECOVE_SIMULATOR_DELAY_MS"_s, u"60000"_s);
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(SIMULATOR_PROGRAM), status);
        QVERIFY(process.waitForStarted());
        QTRY_COMPARE(simulator.calls(), QList<QStringList>{status});
        QCOMPARE(process.state(), QProcess::Running);
        process.kill();
        QVERIFY(process.waitForFinished());
    }

    void exitCodeIsReplaced_data()
    {
        QTest::addColumn<QString>("setting");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("success made a failure") << u"7"_s << status << 7;
        QTest::newRow("largest") << u"255"_s << status << 255;
        QTest::newRow("failure made a success") << u"0"_s << QStringList{u"frobnicate"_s} << 0;
    }

    void exitCodeIsReplaced()
    {
        QFETCH(QString, setting);
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        SimulatorRunner simulator;
        const SimulatorRun plain = simulator.run(arguments);
        simulator.set("EXIT_CODE", setting);
        const SimulatorRun faulty = simulator.run(arguments);
        QCOMPARE(faulty.exitCode, exitCode);
        QCOMPARE(faulty.output, plain.output);
        QCOMPARE(faulty.errors, plain.errors);
    }

    void signalEndsTheRunAfterHalfTheAnswer_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("killed") << SIGKILL;
        QTest::newRow("terminated") << SIGTERM;
        QTest::newRow("segmentation fault") << SIGSEGV;
        QTest::newRow("aborted") << SIGABRT;
    }

    void signalEndsTheRunAfterHalfTheAnswer()
    {
        QFETCH(int, signal);
        SimulatorRunner simulator;
        const QByteArray whole = simulator.output(status);
        simulator.set("SIGNAL", QString::number(signal));
        const SimulatorRun outcome = simulator.run(status);
        QCOMPARE(outcome.exitStatus, QProcess::CrashExit);
        QCOMPARE(outcome.exitCode, signal);
        QCOMPARE(outcome.output, whole.first(whole.size() / 2));
    }

    void floodIsExactlyAsLong_data()
    {
        QTest::addColumn<int>("bytes");
        QTest::newRow("one byte") << 1;
        QTest::newRow("less than a block") << 1000;
        QTest::newRow("more than a pipe holds") << 65'537;
        QTest::newRow("megabytes") << 3'000'001;
    }

    void floodIsExactlyAsLong()
    {
        QFETCH(int, bytes);
        SimulatorRunner simulator;
        simulator.set("FLOOD_BYTES", QString::number(bytes));
        const SimulatorRun outcome = simulator.run(status);
        QCOMPARE(outcome.output.size(), bytes);
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(!outcome.output.contains("connector_health"));
        QVERIFY(outcome.output.count('\n') >= bytes / 64);
    }

    void invalidUtf8LeavesTheLinesWhole()
    {
        SimulatorRunner simulator;
        const QList<QByteArray> lines = simulator.output(status).trimmed().split('\n');
        simulator.set("INVALID_UTF8", u"1"_s);
        const QByteArray mixed = simulator.output(status);
        QStringDecoder decoder(QStringDecoder::Utf8);
        const QString text = decoder(mixed);
        QVERIFY(decoder.hasError());
        QVERIFY(text.contains(QChar::ReplacementCharacter));
        const QList<QByteArray> mixedLines = mixed.split('\n');
        for (const QByteArray &line : lines)
            QVERIFY(mixedLines.contains(line));
        QVERIFY(mixed.endsWith("\xE2\x82"));
    }

    void silentRunPrintsNothing_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("an answer") << status;
        QTest::newRow("the usage") << QStringList{u"frobnicate"_s};
    }

    void silentRunPrintsNothing()
    {
        QFETCH(QStringList, arguments);
        SimulatorRunner simulator;
        simulator.set("SILENT", u"1"_s);
        const SimulatorRun outcome = simulator.run(arguments);
        QCOMPARE(outcome.exitStatus, QProcess::NormalExit);
        QCOMPARE(outcome.output + outcome.errors, QByteArray());
    }

    void serverCanBeUnreachable()
    {
        SimulatorRunner simulator;
        simulator.set("SERVER", u"unreachable"_s);
        QVERIFY(simulator.output(server).contains(R"("reachable":false)"));
    }

    void faultsCanBeMeantForOneCommand()
    {
        SimulatorRunner simulator;
        simulator.set("ONLY", u"status"_s);
        simulator.set("SILENT", u"1"_s);
        simulator.set("EXIT_CODE", u"9"_s);
        QCOMPARE(simulator.run(status).exitCode, 9);
        QCOMPARE(simulator.output(status), QByteArray());
        QCOMPARE(simulator.run(server).exitCode, 0);
        QVERIFY(simulator.output(server).contains(reachable));
    }

    void faultsFileWinsOverTheEnvironment()
    {
        SimulatorRunner simulator;
        simulator.set("EXIT_CODE", u"9"_s);
        simulator.set("SILENT", u"1"_s);
        QVERIFY(simulator.writeFile("faults", "# a comment\n\nEXIT_CODE=11\nSILENT=\n"));
        const SimulatorRun outcome = simulator.run(server);
        QCOMPARE(outcome.exitCode, 11);
        QVERIFY(outcome.output.contains(reachable));
    }

    void faultsFileIsReadAtEachCall()
    {
        const SimulatorRunner simulator;
        QVERIFY(simulator.output(server).contains(reachable));
        QVERIFY(simulator.writeFile("faults", "SERVER=unreachable"));
        QVERIFY(simulator.output(server).contains(R"("reachable":false)"));
        QVERIFY(QFile::remove(simulator.filePath("faults")));
        QVERIFY(simulator.output(server).contains(reachable));
    }

    void badValuesCountAsNotSet_data()
    {
        QTest::addColumn<QByteArray>("faults");
        QTest::newRow("words") << QByteArray(
            "EXIT_CODE=nine\nSIGNAL=KILL\nFLOOD_BYTES=lots\nDELAY_MS=long\n");
        QTest::newRow("below zero") << QByteArray("EXIT_CODE=-1\nSIGNAL=-9\nFLOOD_BYTES=-1\nDELAY_MS=-1\n");
        QTest::newRow("too large") << QByteArray("EXIT_CODE=256\nSIGNAL=999\nDELAY_MS=99999999999999\n");
        QTest::newRow("zero") << QByteArray("SIGNAL=0\nFLOOD_BYTES=0\nDELAY_MS=0\n");
        QTest::newRow("not one") << QByteArray("SILENT=yes\nINVALID_UTF8=0\n");
        QTest::newRow("lower case") << QByteArray("silent=1\nexit_code=3\n");
    }

    void badValuesCountAsNotSet()
    {
        QFETCH(QByteArray, faults);
        const SimulatorRunner simulator;
        const QByteArray plain = simulator.output(status);
        QVERIFY(simulator.writeFile("faults", faults));
        const SimulatorRun outcome = simulator.run(status);
        QCOMPARE(outcome.output, plain);
        QCOMPARE(outcome.exitCode, 0);
    }

    void silentCommandStillTakesEffect()
    {
        SimulatorRunner simulator;
        simulator.set("ONLY", u"claim-token"_s);
        simulator.set("SILENT", u"1"_s);
        QCOMPARE(simulator.output({u"claim-token"_s, u"4f9a"_s}), QByteArray());
        QVERIFY(simulator.output({u"bind-status"_s}).contains("pending_signature"));
    }
};

static const TestClass<TestSimulatorFaults> testSimulatorFaults("tst_simulatorfaults");

#include "tst_simulatorfaults.moc"
