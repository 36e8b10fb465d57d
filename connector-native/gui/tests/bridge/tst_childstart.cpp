#include "childtesting.h"
#include "support/testprogram.h"

#include <QDir>

#include <csignal>

#ifdef __APPLE__
#include <crt_externs.h>
#endif

namespace {

class BlockedAndIgnoredSignals
{
public:
    BlockedAndIgnoredSignals()
    {
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_SETMASK, &all, &m_mask);
        struct sigaction ignore
        {
        };
        ignore.sa_handler = SIG_IGN;
        for (std::size_t i = 0; i < ignored.size(); ++i) {
            sigaction(ignored[i], &ignore, &m_actions[i]);
        }
    }
    Q_DISABLE_COPY_MOVE(BlockedAndIgnoredSignals)
    ~BlockedAndIgnoredSignals()
    {
        for (std::size_t i = 0; i < ignored.size(); ++i) {
            sigaction(ignored[i], &m_actions[i], nullptr);
        }
        sigprocmask(SIG_SETMASK, &m_mask, nullptr);
    }

private:
    static constexpr std::array ignored{SIGPIPE, SIGCHLD, SIGINT, SIGHUP, SIGUSR1, SIGTTOU};
    std::array<struct sigaction, ignored.size()> m_actions{};
    sigset_t m_mask{};
};

} // namespace

class TestChildStart : public QObject
{
    Q_OBJECT

    std::vector<int> m_descriptors;

private slots:
    void init() { m_descriptors = openDescriptors(); }

    void cleanup()
    {
        QCOMPARE(openDescriptors(), m_descriptors);
        QVERIFY(noChildren());
    }

    void argumentsArriveByteForByte_data()
    {
        QTest::addColumn<QStringList>("arguments");

        QTest::newRow("none") << QStringList{};
        QTest::newRow("words") << QStringList{u"load-credentials"_s, u"bybit"_s};
        QTest::newRow("blanks") << QStringList{u" a  b "_s, u"\t"_s};
        QTest::newRow("empty") << QStringList{QString(), u""_s, u"last"_s};
        QTest::newRow("quotes") << QStringList{u"'"_s, u"\""_s, u"`id`"_s, u"\\"_s};
        QTest::newRow("shell syntax") << QStringList{u"$HOME"_s, u"$(id)"_s, u"*"_s, u"; id | & > x"_s};
        QTest::newRow("leading dashes") << QStringList{u"-c"_s, u"--help"_s, u"-"_s, u"--"_s};
        QTest::newRow("Unicode") << QStringList{u"Schlüssel €"_s, u"ひ😀"_s, u"e\u0301"_s, u"\uFEFF"_s};
        QTest::newRow("line feeds") << QStringList{u"a\nb\n"_s, u"\r\n"_s, u"\n"_s};
        QTest::newRow("controls") << QStringList{u"\x01\x1B[31m\x7F"_s};
        QTest::newRow("long") << QStringList{QString(100'000, u'x')};
        QTest::newRow("many") << QStringList(2000, u"y"_s);
    }

    void argumentsArriveByteForByte()
    {
        QFETCH(QStringList, arguments);
        const ChildResult result = probe(QStringList{u"arguments"_s} + arguments);
        Bytes expected =
            (QCoreApplication::applicationDirPath() + u"/childprobe"_s).toUtf8() + '\0' + "arguments" + '\0';
        for (const QString &argument : arguments) {
            expected += argument.toUtf8() + '\0';
        }
        QVERIFY(result.launched());
        QCOMPARE(result.output, expected);
    }

    void environmentIsUntouched()
    {
        qputenv("CHILD_PROBE_TEST", "blank =\nü$HOME");
        Bytes expected;
#ifdef __APPLE__
        char **entry = *_NSGetEnviron();
#else
        char **entry = environ;
#endif
        for (; *entry != nullptr; ++entry) {
            expected += Bytes(*entry) + '\0';
        }
        QCOMPARE(probe({u"environment"_s}).output, expected);
        qunsetenv("CHILD_PROBE_TEST");
    }

    void directoryIsUntouched()
    {
        const QTemporaryDir directory(QDir::tempPath() + u"/child ü XXXXXX"_s);
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(directory.path()));
        const ChildResult result = probe({u"directory"_s});
        const QString during = QDir::currentPath();
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(result.output, during.toUtf8());
    }

    void streamsAreOnePipeAndNoInput()
    {
        QCOMPARE(probe({u"streams"_s}).output, "one pipe, no input"_ba);
    }

    void otherDescriptorsAreClosed()
    {
        const int inherited = open("/dev/null", O_RDONLY);
        const int high = fcntl(inherited, F_DUPFD, 700);
        QVERIFY(high >= 700);
        QCOMPARE(probe({u"descriptors"_s}).output, "0 1 2 "_ba);
        QVERIFY(fcntl(inherited, F_GETFD) >= 0);
        close(inherited);
        close(high);
    }

    void closedStandardStreamsDoNotMatter()
    {
        const Bytes output = inFork([] {
            close(STDIN_FILENO);
            close(STDOUT_FILENO);
            close(STDERR_FILENO);
            return probe({u"streams"_s}).output + ", " + probe({u"descriptors"_s}).output;
        });
        QCOMPARE(output, "one pipe, no input, 0 1 2 "_ba);
    }

    void signalsAreAsInAFreshProcess()
    {
        Bytes output;
        {
            const BlockedAndIgnoredSignals spoilt;
            output = probe({u"signals"_s}).output;
        }
        QCOMPARE(output, "end"_ba);
    }

    void signalHandlingOfThisProcessStays()
    {
        const BlockedAndIgnoredSignals spoilt;
        QVERIFY(probe({u"signals"_s}).launched());
        sigset_t mask;
        sigprocmask(SIG_SETMASK, nullptr, &mask);
        QCOMPARE(sigismember(&mask, SIGUSR2), 1);
        struct sigaction action
        {
        };
        sigaction(SIGPIPE, nullptr, &action);
        QVERIFY(action.sa_handler == SIG_IGN);
    }
};

static const TestClass<TestChildStart> testChildStart("tst_childstart");

#include "tst_childstart.moc"
