#include "simulatorrunner.h"
#include "support/testprogram.h"

using namespace Qt::StringLiterals;

namespace {

const QStringList bindStatus = {u"bind-status"_s};
const QStringList claim = {u"claim-token"_s, u"4f9a-11c0"_s};
const QStringList validateOkx = {u"validate"_s, u"okx"_s, u"trade-1"_s, u"secret"_s, u"phrase"_s};

constexpr auto authorized = R"("bindState":"authorized")";
constexpr auto pending = "pending_signature";

} // namespace

/// The stand-in's life: pairing, update, its state and the record of its calls.
class TestSimulator : public QObject
{
    Q_OBJECT

private slots:
    void signatureArrivesAfterTheFirstChecks()
    {
        const SimulatorRunner simulator;
        QVERIFY(simulator.output(bindStatus).contains("session_missing"));
        QVERIFY(simulator.output(status).contains("connector_health=pairing_required\n"));

        const QByteArray claimed = simulator.output(claim);
        QVERIFY(claimed.contains(R"("status":"ok")"));
        QVERIFY(claimed.contains(pending));
        for (int check = 0; check < 3; ++check)
            QVERIFY(simulator.output(bindStatus).contains(pending));

        const QByteArray bound = simulator.output(bindStatus);
        QVERIFY(bound.contains(authorized));
        QVERIFY(bound.contains(R"("pairingStatus":"bound")"));
        QVERIFY(simulator.output(status).contains("connector_health=ready\n"));
    }

    void pendingChecksCanBeChosen_data()
    {
        QTest::addColumn<int>("wanted");
        QTest::newRow("authorized at once") << 0;
        QTest::newRow("one pending check") << 1;
        QTest::newRow("five pending checks") << 5;
    }

    void pendingChecksCanBeChosen()
    {
        QFETCH(int, wanted);
        SimulatorRunner simulator;
        simulator.set("PENDING_CHECKS", QString::number(wanted));
        QVERIFY(simulator.output(claim).contains(pending));
        for (int check = 0; check < wanted; ++check)
            QVERIFY(simulator.output(bindStatus).contains(pending));
        QVERIFY(simulator.output(bindStatus).contains(authorized));
    }

    void authorizedBindingOutlastsALaterSetting()
    {
        SimulatorRunner simulator;
        simulator.set("PENDING_CHECKS", u"100000"_s);
        QVERIFY(simulator.output(claim).contains(pending));
        QVERIFY(simulator.output(bindStatus).contains(pending));
        QVERIFY(simulator.writeFile("faults", "PENDING_CHECKS=0\n"));
        QVERIFY(simulator.output(bindStatus).contains(authorized));
        QVERIFY(simulator.writeFile("faults", ""));
        QVERIFY(simulator.output(bindStatus).contains(authorized));
    }

    void tokenPrefixDecidesTheClaim_data()
    {
        QTest::addColumn<QString>("token");
        QTest::addColumn<bool>("isOk");
        QTest::addColumn<bool>("isPending");
        QTest::addColumn<QByteArray>("bindingAfterwards");
        QTest::newRow("usual token waits for the signature")
            << u"4f9a"_s << true << true << QByteArray(pending);
        QTest::newRow("waiting- is claimed only")
            << u"waiting-1"_s << true << false << QByteArray("token_waiting");
        QTest::newRow("bad is refused") << u"bad-token"_s << false << false << QByteArray("session_missing");
        QTest::newRow("blanks are refused") << u" \t "_s << false << false << QByteArray("session_missing");
        QTest::newRow("empty is refused") << QString() << false << false << QByteArray("session_missing");
    }

    void tokenPrefixDecidesTheClaim()
    {
        QFETCH(QString, token);
        QFETCH(bool, isOk);
        QFETCH(bool, isPending);
        QFETCH(QByteArray, bindingAfterwards);
        const SimulatorRunner simulator;
        const SimulatorRun claimed = simulator.run({u"claim-token"_s, token});
        QCOMPARE(claimed.output.contains(R"("status":"ok")"), isOk);
        QCOMPARE(claimed.output.contains(pending), isPending);
        QCOMPARE(claimed.exitCode, isOk ? 0 : 1);
        QVERIFY(simulator.output(bindStatus).contains(bindingAfterwards));
    }

    void disconnectingUndoesThePairing()
    {
        const SimulatorRunner simulator;
        QVERIFY(simulator.output(claim).contains(pending));
        QVERIFY(simulator.output({u"disconnect-binding"_s}).contains(R"("status":"ok")"));
        QVERIFY(simulator.output(bindStatus).contains("unpaired"));
        QVERIFY(simulator.output(status).contains("connector_health=pairing_required"));
    }

    void serverIsReachable()
    {
        QVERIFY(SimulatorRunner().output({u"server-health"_s}).contains(R"("reachable":true)"));
    }

    void updateGoesStepByStep()
    {
        const SimulatorRunner simulator;
        const auto expect = [&simulator](const QString &command, const char *answer) {
            QVERIFY2(simulator.output({command}).contains(answer), answer);
        };
        expect(u"update-check"_s, "latest_version=1.4.0");
        expect(u"update-apply"_s, "update=nothing_to_apply");
        expect(u"update-download"_s, "update=downloaded");
        expect(u"update-check"_s, "Waiting to be installed");
        expect(u"status"_s, "connector_version=1.3.2");
        expect(u"update-apply"_s, "update=applied");
        expect(u"update-check"_s, "This is the latest version");
        expect(u"status"_s, "connector_version=1.4.0");
        expect(u"update-download"_s, "update=none");
    }

    void wrongUseIsAnsweredWithTheUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("no command") << QStringList();
        QTest::newRow("unknown command") << QStringList{u"frobnicate"_s};
        QTest::newRow("too few arguments") << QStringList{u"validate"_s, u"okx"_s};
        QTest::newRow("too many arguments") << QStringList{u"status"_s, u"now"_s};
    }

    void wrongUseIsAnsweredWithTheUsage()
    {
        QFETCH(QStringList, arguments);
        const SimulatorRun outcome = SimulatorRunner().run(arguments);
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(outcome.output, QByteArray());
        QVERIFY(outcome.errors.startsWith("usage:\n"));
        QVERIFY(outcome.errors.contains("validate EXCHANGE KEY SECRET [PASSPHRASE]"));
    }

    void callsAreRecordedExactly()
    {
        const SimulatorRunner simulator;
        const QList<QStringList> calls = {
            {u"claim-token"_s, u"  two  blanks "_s},
            {u"claim-token"_s, u"\"quoted\" and \\ and 'single'"_s},
            {u"claim-token"_s, u"żółw 漢字 \U0001F512"_s},
            {u"claim-token"_s, u"line\nbreak\ttab\r\x01\x7f"_s},
            {u"validate"_s, u"okx"_s, {}, {}},
            {u"frobnicate"_s, u"$HOME; ls"_s},
            status,
        };
        for (const QStringList &call : calls)
            QVERIFY(simulator.run(call).exitCode >= 0);
        QCOMPARE(simulator.calls(), calls);
        QVERIFY(simulator.readFile("calls.log").endsWith("\n[\"status\"]\n"));
    }

    void stateIsPrivateToTheUser()
    {
        const SimulatorRunner simulator;
        QCOMPARE(simulator.run(claim).exitCode, 0);
        QCOMPARE(simulator.run(validateOkx).exitCode, 0);
        QCOMPARE(simulator.run({u"update-download"_s}).exitCode, 0);
        const QFile::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner;
        const QFile::Permissions everyBit = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
            | QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther
            | QFile::ExeOther;
        for (const char *name : {"calls.log", "binding", "update", "vault/okx"})
            QCOMPARE(QFile::permissions(simulator.filePath(name)) & everyBit, ownerOnly);
        for (const char *name : {"", "vault"})
            QCOMPARE(QFile::permissions(simulator.filePath(name)) & everyBit, ownerOnly | QFile::ExeOwner);
    }

    void garbledStateCountsAsNone_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no fields") << QByteArray("%PDF-1.4\n");
        QTest::newRow("bytes of every value") << QByteArray("\x00\xff\n=\n==\n#\x80", 10);
        QTest::newRow("unknown values")
            << QByteArray("state=??\nchecks=-1\nstep=sideways\napi_key=trade-1\n");
        QTest::newRow("very long") << QByteArray(1'000'000, 'x');
    }

    void garbledStateCountsAsNone()
    {
        QFETCH(QByteArray, content);
        const SimulatorRunner simulator;
        for (const char *name : {"binding", "update", "vault/okx", "faults"})
            QVERIFY(simulator.writeFile(name, content));
        QVERIFY(simulator.output(bindStatus).contains("session_missing"));
        QVERIFY(simulator.output({u"update-check"_s}).contains("update=available"));
        QVERIFY(simulator.output(loadOkx).contains("status=missing"));
        QVERIFY(simulator.output({u"balance"_s, u"okx"_s}).contains("credentials_not_found"));
        QVERIFY(simulator.output(validateOkx).contains("credentials_saved=true"));
        QVERIFY(simulator.output(loadOkx).contains("api_key=trade-1\n"));
    }

    void concurrentCallsAreAllRecorded()
    {
        const SimulatorRunner simulator;
        const QString script = u"for i in 1 2 3 4 5 6 7 8; do \"$0\" validate okx trade-1 s p & done; wait"_s;
        QProcess shell;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"BRINDLECOVE_SIMULATOR_STATE"_s, simulator.filePath(""));
        shell.setProcessEnvironment(environment);
        shell.start(u"/bin/sh"_s, {u"-c"_s, script, QStringLiteral(SIMULATOR_PROGRAM)});
        QVERIFY(shell.waitForFinished());
        const QStringList call = {u"validate"_s, u"okx"_s, u"trade-1"_s, u"s"_s, u"p"_s};
        QCOMPARE(simulator.calls(), QList<QStringList>(8, call));
        QVERIFY(simulator.output(loadOkx).contains("status=ok"));
        QCOMPARE(QDir(simulator.filePath("vault")).entryList(QDir::Files), QStringList{u"okx"_s});
    }
};

static const TestClass<TestSimulator> testSimulator("tst_simulator");

#include "tst_simulator.moc"
