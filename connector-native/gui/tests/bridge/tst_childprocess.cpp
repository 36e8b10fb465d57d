#include "childtesting.h"
#include "support/testprogram.h"

#include <QDir>

#include <csignal>
#include <sys/resource.h>
#include <sys/time.h>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

// Interrupts every blocking call again and again.
class Interruptions
{
public:
    Interruptions()
    {
        struct sigaction action
        {
        };
        action.sa_handler = [](int) { count = count + 1; };
        sigaction(SIGALRM, &action, &m_before);
        const itimerval often{{0, 2000}, {0, 2000}};
        setitimer(ITIMER_REAL, &often, nullptr);
    }
    Q_DISABLE_COPY_MOVE(Interruptions)
    ~Interruptions()
    {
        const itimerval never{};
        setitimer(ITIMER_REAL, &never, nullptr);
        sigaction(SIGALRM, &m_before, nullptr);
    }

    static inline volatile std::sig_atomic_t count = 0;

private:
    struct sigaction m_before
    {
    };
};

} // namespace

class TestChildProcess : public QObject
{
    Q_OBJECT

    [[nodiscard]] Bytes script(const Bytes &body) const
    {
        return writtenFile(m_directory, u"script"_s, "#!/bin/sh\n" + body,
                           QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QTemporaryDir m_directory{QDir::tempPath() + u"/child ü XXXXXX"_s};
    std::vector<int> m_descriptors;

private slots:
    // A crash on purpose shall leave no core file behind.
    void initTestCase()
    {
        const rlimit none{};
        QVERIFY(m_directory.isValid());
        QCOMPARE(setrlimit(RLIMIT_CORE, &none), 0);
    }

    void init() { m_descriptors = openDescriptors(); }

    void cleanup()
    {
        QCOMPARE(openDescriptors(), m_descriptors);
        QVERIFY(noChildren());
    }

    void outputOfScripts_data()
    {
        QTest::addColumn<Bytes>("body");
        QTest::addColumn<Bytes>("output");

        QTest::newRow("nothing printed") << ""_ba
                                         << ""_ba;
        QTest::newRow("both streams in the order written")
            << "echo a; echo b >&2; echo c; echo d >&2; echo e"_ba
            << "a\nb\nc\nd\ne\n"_ba;
        QTest::newRow("only standard error") << "printf x >&2"_ba
                                             << "x"_ba;
        QTest::newRow("exit code 1 is not looked at") << "echo no; exit 1"_ba
                                                      << "no\n"_ba;
        QTest::newRow("exit code 255 is not looked at") << "echo no; exit 255"_ba
                                                        << "no\n"_ba;
        QTest::newRow("bytes stay as they are") << R"(printf 'a\000\377\r\n')"_ba
                                                << "a\0\xFF\r\n"_ba;
        QTest::newRow("output closed early") << "echo a; exec >&- 2>&-; sleep 0.1"_ba
                                             << "a\n"_ba;
    }

    void outputOfScripts()
    {
        QFETCH(Bytes, body);
        QFETCH(Bytes, output);
        const ChildResult result = runChild(script(body), {});
        QCOMPARE(result.launchError, QString());
        QCOMPARE(result.output, output);
    }

    void outputOfAnySize_data()
    {
        QTest::addColumn<int>("size");
        for (const int size : {1, 4096, 65'535, 65'536, 65'537, 1'000'000, 1'048'576}) {
            QTest::addRow("%d bytes", size) << size;
        }
    }

    void outputOfAnySize()
    {
        QFETCH(int, size);
        Bytes expected(size, '\0');
        for (int i = 0; i < size; ++i) {
            expected[i] = static_cast<char>('a' + i % 23);
        }
        const ChildResult result = probe({u"bytes"_s, QString::number(size)});
        QVERIFY(result.launched());
        QCOMPARE(result.output.size(), expected.size());
        QVERIFY(result.output == expected);
    }

    void deathKeepsTheOutput_data()
    {
        QTest::addColumn<int>("number");
        QTest::newRow("killed") << SIGKILL;
        QTest::newRow("crashed") << SIGSEGV;
        QTest::newRow("aborted") << SIGABRT;
        QTest::newRow("terminated") << SIGTERM;
    }

    void deathKeepsTheOutput()
    {
        QFETCH(int, number);
        const ChildResult result = probe({u"die"_s, QString::number(number)});
        QVERIFY(result.launched());
        QCOMPARE(result.output, "before"_ba);
    }

    void readsOnlyAfterTheEnd() { QCOMPARE(probe({u"unread"_s}).output, "123455"_ba); }

    void returnsAfterTheEndNotBefore()
    {
        const QString trace = m_directory.filePath(u"trace"_s);
        const ChildResult result = runChild(script("exec >&- 2>&-; sleep 0.2; : > \"$1\""), {trace});
        QVERIFY(result.launched());
        QVERIFY(QFile::exists(trace));
    }

    void waitsForWhoeverHoldsTheOutput()
    {
        const ChildResult result = runChild(script("(sleep 0.2; printf late) & printf early"), {});
        QCOMPARE(result.output, "earlylate"_ba);
    }

    void interruptionsDoNotMatter()
    {
        Interruptions::count = 0;
        ChildResult result;
        {
            const Interruptions interruptions;
            result = runChild(script("(sleep 0.2; printf late) & sleep 0.1; printf early"), {});
        }
        QVERIFY(Interruptions::count > 1);
        QCOMPARE(result.output, "earlylate"_ba);
    }

#ifdef __GLIBC__
    void runsKeepNoMemory()
    {
        constexpr std::size_t runs = 20;
        const auto used = [] { return mallinfo2().uordblks; };
        QVERIFY(runChild("/bin/true"_ba, {}).launched());
        const std::size_t before = used();
        for (std::size_t run = 0; run < runs; ++run) {
            static_cast<void>(runChild("/bin/true"_ba, {}));
        }
        QVERIFY2(used() < before + runs * 50, qPrintable(QString::number(used() - before)));
    }
#endif

    void ignoredChildSignalDoesNotMatter()
    {
        struct sigaction ignore
        {
        };
        struct sigaction before
        {
        };
        ignore.sa_handler = SIG_IGN;
        sigaction(SIGCHLD, &ignore, &before);
        const ChildResult result = runChild(script("sleep 0.1; echo done"), {});
        const ChildResult failed = runChild("/nowhere/at all"_ba, {});
        sigaction(SIGCHLD, &before, nullptr);
        QCOMPARE(result.output, "done\n"_ba);
        QCOMPARE(failed.launchError, u"the file does not exist"_s);
    }
};

static const TestClass<TestChildProcess> testChildProcess("tst_childprocess");

#include "tst_childprocess.moc"
