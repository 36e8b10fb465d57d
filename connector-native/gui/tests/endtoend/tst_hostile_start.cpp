#include "application.h"
#include "desktop.h"
#include "mainwindow.h"
#include "processes.h"
#include "support/testprogram.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

constexpr int startupCalls = 9;
const QStringList usualTiles = {u"Connector"_s, u"pairing required"_s, u"Server"_s,
                                u"reachable"_s, u"Binding"_s,          u"not bound"_s};

/// A second X display for this process and those it starts, which can be taken away.
class SecondDisplay
{
public:
    SecondDisplay()
    {
        m_server.setProgram(u"Xvfb"_s);
        m_server.setArguments({u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s, u"-noreset"_s});
        m_server.setStandardErrorFile(QProcess::nullDevice());
        m_server.start();
        if (!m_server.waitForReadyRead())
            qFatal("Xvfb failed");
        qputenv("DISPLAY", ':' + m_server.readAllStandardOutput().trimmed());
    }
    Q_DISABLE_COPY_MOVE(SecondDisplay)
    ~SecondDisplay()
    {
        takeAway();
        qputenv("DISPLAY", m_before);
    }

    void takeAway()
    {
        m_server.kill();
        m_server.waitForFinished();
    }

private:
    QProcess m_server;
    const QByteArray m_before = qgetenv("DISPLAY");
};

void awaitCommands(const Application &application, int count)
{
    QTRY_COMPARE(application.calls().size(), count);
    QTRY_COMPARE(childrenOf(application.processId()), 0);
}

/// Nothing is cleared away then, which a sanitizer would take for a leak.
void startToBeEndedAbruptly(Application &application)
{
    application.setEnvironment(u"ASAN_OPTIONS"_s,
                               qEnvironmentVariable("ASAN_OPTIONS") + u":detect_leaks=0"_s);
    QVERIFY(application.installSimulator());
    QVERIFY(application.start());
    awaitCommands(application, startupCalls);
}

void verifyNothingIsLeftOf(Application &application)
{
    QVERIFY(application.waitForEnd() >= 0);
    QTRY_COMPARE(processesNaming(application.directory()), 0);
}

} // namespace

/// Whoever starts the program may have left it a strange place in the world, and the world may go away under
/// it.
class TestHostileStart : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enableAccessibility()); }

    void worksWhileTheEndOfChildrenIsIgnored()
    {
        Application application;
        QVERIFY(application.installSimulator());
        QVERIFY(application.startBy(uR"(trap '' CHLD; exec "$0")"_s));
        QVERIFY(ignores(application.processId(), SIGCHLD));
        const MainWindow window(application);
        awaitCommands(application, startupCalls);
        QTRY_COMPARE(window.tiles(), usualTiles);
        QVERIFY(window.clickButton(u"Refresh all"_s));
        awaitCommands(application, startupCalls + 4);
        QTRY_COMPARE(window.tiles(), usualTiles);
        QCOMPARE(application.printed(), QByteArray());
    }

    void worksWithoutStandardStreams_data()
    {
        QTest::addColumn<QList<int>>("closed");
        QTest::newRow("input") << QList{0};
        QTest::newRow("output") << QList{1};
        QTest::newRow("errors") << QList{2};
        QTest::newRow("input and output") << QList{0, 1};
        QTest::newRow("input and errors") << QList{0, 2};
        QTest::newRow("output and errors") << QList{1, 2};
        QTest::newRow("all") << QList{0, 1, 2};
    }

    void worksWithoutStandardStreams()
    {
        QFETCH(const QList<int>, closed);
        QString redirections;
        for (const int descriptor : closed)
            redirections += u' ' + QString::number(descriptor) + u">&-"_s;
        Application application;
        QVERIFY(application.installSimulator());
        QVERIFY(application.startBy(uR"(exec "$0")"_s + redirections));
        const MainWindow window(application);
        awaitCommands(application, startupCalls);
        QTRY_COMPARE(window.tiles(), usualTiles);
        for (const int descriptor : closed)
            QCOMPARE(descriptorTarget(application.processId(), descriptor), u"/dev/null"_s);
        QCOMPARE(application.printed(), QByteArray());
    }

    void findsItsConnectorHoweverItWasStarted_data()
    {
        QTest::addColumn<QString>("lines");
        QTest::newRow("name without a directory") << uR"(cd "$place"; exec -a "$name" "$0")"_s;
        QTest::newRow("name of something else") << uR"(exec -a something-else "$0")"_s;
        QTest::newRow("empty name") << uR"(exec -a '' "$0")"_s;
        QTest::newRow("relative path") << uR"(cd "$place/state"; exec ../"$name")"_s;
        QTest::newRow("path with detours") << uR"(exec "$place/./state/..//$name")"_s;
        QTest::newRow("link in another directory")
            << uR"(mkdir "$place/state/a"; ln -s "$0" "$place/state/a/link"; exec "$place/state/a/link")"_s;
        QTest::newRow("link to a link")
            << uR"(cd "$place/state"; ln -s "$0" one; ln -s one two; exec ./two)"_s;
        QTest::newRow("link to the directory")
            << uR"(cd "$place/state"; ln -s .. there; exec there/"$name")"_s;
        QTest::newRow("directory with blanks and Unicode")
            << uR"(odd="$place/state/ a  ü 钥匙 🔑"; mkdir "$odd"; cp "$0" "$odd"; )"
               uR"(mv "$place/brindlecove-connector" "$odd"; exec "$odd/$name")"_s;
        QTest::newRow("directory that is no UTF-8")
            << uR"(odd="$place/state/"$'\xff \xc3'; mkdir "$odd"; cp "$0" "$odd"; )"
               uR"(mv "$place/brindlecove-connector" "$odd"; exec "$odd/$name")"_s;
        QTest::newRow("name of something else in a directory that is no UTF-8")
            << uR"(odd="$place/state/"$'\xff \xc3'; mkdir "$odd"; cp "$0" "$odd"; )"
               uR"(mv "$place/brindlecove-connector" "$odd"; exec -a something-else "$odd/$name")"_s;
        QTest::newRow("connector beside a link in a directory that is no UTF-8")
            << uR"(odd="$place/state/"$'\xff \xc3'; mkdir "$odd"; ln -s "$0" "$odd/link"; )"
               uR"(mv "$place/brindlecove-connector" "$odd"; exec "$odd/link")"_s;
        QTest::newRow("connector beside the link only")
            << uR"(mkdir "$place/state/b"; mv "$place/brindlecove-connector" "$place/state/b"; )"
               uR"(ln -s "$0" "$place/state/b/link"; cd "$place/state"; exec b/link)"_s;
    }

    void findsItsConnectorHoweverItWasStarted()
    {
        QFETCH(const QString, lines);
        Application application;
        QVERIFY(application.installSimulator());
        QVERIFY(application.startBy(u"set -e; "_s + lines));
        const MainWindow window(application);
        awaitCommands(application, startupCalls);
        QTRY_COMPARE(window.tiles(), usualTiles);
        QCOMPARE(application.printed(), QByteArray());
    }

    void needsNoHome_data()
    {
        QTest::addColumn<QString>("lines");
        QTest::newRow("unset") << u"unset HOME"_s;
        QTest::newRow("empty") << u"export HOME="_s;
        QTest::newRow("absent") << u"export HOME=/nowhere/at/all"_s;
        QTest::newRow("plain file") << uR"(export HOME="$0")"_s;
        QTest::newRow("closed to its owner") << uR"(export HOME="$place/home"; mkdir -m 000 "$HOME")"_s;
    }

    void needsNoHome()
    {
        QFETCH(const QString, lines);
        Application application;
        QVERIFY(application.installSimulator());
        QVERIFY(application.startBy(lines + uR"(; exec "$0")"_s));
        const MainWindow window(application);
        awaitCommands(application, startupCalls);
        QTRY_COMPARE(window.tiles(), usualTiles);

        QVERIFY(application.removeConnector());
        QVERIFY(window.clickButton(u"Refresh all"_s));
        QTRY_COMPARE(window.tileWord(u"Connector"_s), u"starting"_s);
        QCOMPARE(application.printed(), QByteArray());
    }

    void endsWithItsDisplay()
    {
        SecondDisplay display;
        Application application;
        startToBeEndedAbruptly(application);
        display.takeAway();
        verifyNothingIsLeftOf(application);
    }

    void endsWithItsDisplayOnceACommandIsDone()
    {
        SecondDisplay display;
        Application application;
        startToBeEndedAbruptly(application);
        QVERIFY(application.setFaults("DELAY_MS=1000\n"));
        const MainWindow window(application);
        QVERIFY(window.clickButton(u"Check server"_s));
        QTRY_COMPARE(application.calls().size(), startupCalls + 1);
        QCOMPARE(childrenOf(application.processId()), 1);
        display.takeAway();
        verifyNothingIsLeftOf(application);
    }

    void closesOnceACommandIsDone()
    {
        const desktop::WindowManager manager;
        Application application;
        QVERIFY(application.installSimulator());
        QVERIFY(application.start());
        const MainWindow window(application);
        awaitCommands(application, startupCalls);
        QTRY_VERIFY(application.root().children().constFirst().is(AccessibleNode::State::Active));
        QVERIFY(application.setFaults("DELAY_MS=1000\n"));
        QVERIFY(window.clickButton(u"Check server"_s));
        QTRY_COMPARE(application.calls().size(), startupCalls + 1);
        QCOMPARE(childrenOf(application.processId()), 1);
        manager.closeActiveWindow();
        QCOMPARE(application.waitForEnd(), 0);
        QCOMPARE(application.calls().size(), startupCalls + 1);
        QCOMPARE(processesNaming(application.directory()), 0);
        QCOMPARE(application.printed(), QByteArray());
    }

    // The claim itself starts the polling, and asks for the connector's status once.
    void closesBeforeTheRoundThatAClaimStarts()
    {
        const desktop::WindowManager manager;
        Application application;
        QVERIFY(application.installSimulator());
        QVERIFY(application.start());
        const MainWindow window(application);
        awaitCommands(application, startupCalls);
        QTRY_VERIFY(window.isActive());
        QVERIFY(window.fill(window.tokenField(), u"token"_s));
        QVERIFY(application.setFaults("DELAY_MS=1000\n"));
        QVERIFY(window.clickButton(u"Claim token"_s));
        QTRY_COMPARE(application.calls().size(), startupCalls + 1);
        manager.closeActiveWindow();
        QCOMPARE(application.waitForEnd(), 0);
        QCOMPARE(application.calls().size(), startupCalls + 2);
    }

    void closesBeforeARoundThatHasBecomeDue()
    {
        const desktop::WindowManager manager;
        Application application;
        QVERIFY(application.installSimulator());
        QVERIFY(application.start());
        const MainWindow window(application);
        awaitCommands(application, startupCalls);
        QTRY_VERIFY(window.isActive());
        QVERIFY(window.fill(window.tokenField(), u"token"_s));
        QVERIFY(window.clickButton(u"Claim token"_s));
        // The claim, its look at the status, and the first round.
        constexpr int callsOfClaim = 6;
        awaitCommands(application, startupCalls + callsOfClaim);
        // Longer than the pause between two rounds.
        QVERIFY(application.setFaults("ONLY=server-health\nDELAY_MS=4000\n"));
        QVERIFY(window.clickButton(u"Check server"_s));
        QTRY_COMPARE(application.calls().size(), startupCalls + callsOfClaim + 1);
        manager.closeActiveWindow();
        QCOMPARE(application.waitForEnd(), 0);
        QCOMPARE(application.calls().size(), startupCalls + callsOfClaim + 1);
    }

    void startsWithoutAThreadToSpare()
    {
        Application application;
        QVERIFY(application.installSimulator());
        application.preload(QStringLiteral(NO_THREAD_LIBRARY));
        QVERIFY(application.start());
        const MainWindow window(application);
        awaitCommands(application, startupCalls);
        QTRY_COMPARE(window.tiles(), usualTiles);
        QCOMPARE(application.printed(), QByteArray());
    }

    void saysWhyItDoesNotStartWithoutAnyArgument()
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LD_PRELOAD"_s, QStringLiteral(NO_ARGUMENTS_LIBRARY));
        environment.insert(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0"_s);
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(APPLICATION_PROGRAM), {});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), EXIT_FAILURE);
        // A sanitizer says it first.
        const QByteArray said = program.readAllStandardError();
        QVERIFY2(said.contains("argument 0") || said.contains("argv[0]"), said.constData());
    }

    // Each way in which a text gets into the window: tiles, log, balance, key field and update box.
    void showsMarkupAsItIsAndFetchesNothing()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const QString markup =
            uR"(<img src='http://127.0.0.1:%1/x.png'><b>bold</b>&lt;)"_s.arg(server.serverPort());
        const QString answer =
            u"{\"status\":\"error\",\"reason\":\"%1\"} status=ok\napi_key=%1\n![x](http://127.0.0.1:%2/y.png)\n"_s
                .arg(markup)
                .arg(server.serverPort());

        Application application;
        QVERIFY(application.installPrinter(answer.toUtf8()));
        QVERIFY(application.start());
        const MainWindow window(application);
        QTRY_COMPARE(window.fieldBelow(u"API key"_s).text(), markup);
        QVERIFY(window.clickButton(u"Load balance"_s));
        QTRY_VERIFY(window.shows(markup));
        QVERIFY(window.clickButton(u"Check for updates"_s));
        QVERIFY(window.clickButton(u"Open technical log"_s));
        QTRY_COMPARE(window.newestLogEntry().output, answer);
        QCOMPARE(application.printed(), QByteArray());
        QVERIFY(!server.waitForNewConnection(0));

        // It would have been heard of.
        QTcpSocket visitor;
        visitor.connectToHost(server.serverAddress(), server.serverPort());
        QVERIFY(server.waitForNewConnection());
    }

    void showsStrangeTextAsItIs_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("10,000 combining marks") << u"e"_s + QString(10'000, QChar(u'\u0301'));
        QTest::newRow("right-to-left") << u"\u202E\u05D0\u05D1\u0627\u0644\u2067a\u200F"_s;
        QTest::newRow("escape sequences") << u"\x1B[2J\x1B[31m\x1B]0;title\x07\x1B[6n\u009B"_s;
        QTest::newRow("what no font has") << u"\uFFFF\uE000\U000F0000\u0378\uFFFC"_s;
    }

    void showsStrangeTextAsItIs()
    {
        QFETCH(const QString, text);
        Application application;
        QVERIFY(application.installPrinter(text.toUtf8()));
        QVERIFY(application.start());
        const MainWindow window(application);
        QVERIFY(window.clickButton(u"Open technical log"_s));
        QTRY_COMPARE(window.newestLogEntry().output, text);
        QCOMPARE(window.title(), u"Brindlecove Connector"_s);

        QVERIFY(application.installSimulator());
        QVERIFY(window.clickButton(u"Refresh all"_s));
        QTRY_COMPARE(window.tiles(), usualTiles);
        QCOMPARE(application.printed(), QByteArray());
    }
};

static const TestClass<TestHostileStart> testHostileStart("tst_hostile_start");

#include "tst_hostile_start.moc"
