#include "childtesting.h"
#include "support/testprogram.h"

#include <QDir>

#include <sys/resource.h>

#ifdef __linux__
#include <cstddef>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#endif

namespace {

// The superuser is exempt from most limits.
bool becomeOrdinaryUser()
{
    constexpr uid_t nobody = 65534;
    return geteuid() != 0 || (setgid(nobody) == 0 && setuid(nobody) == 0);
}

bool limit(decltype(RLIMIT_CORE) resource, rlim_t value)
{
    rlimit limits{};
    getrlimit(resource, &limits);
    limits.rlim_cur = value;
    return setrlimit(resource, &limits) == 0;
}

Bytes launchErrorInFork(const std::function<bool()> &spoil)
{
    return inFork([&] {
        const ChildResult before = runChild("/bin/sh"_ba, {u"-c"_s, u"echo"_s});
        return before.launched() && spoil()
            ? runChild("/bin/sh"_ba, {u"-c"_s, u"echo"_s}).launchError.toUtf8()
            : "could not be set up"_ba;
    });
}

// The limit under which just this many descriptors can still be opened: the number of the next free one.
rlim_t limitLeaving(int wanted)
{
    int number = 0;
    for (int left = wanted; left > 0 || fcntl(number, F_GETFD) >= 0; ++number) {
        left -= fcntl(number, F_GETFD) < 0 ? 1 : 0;
    }
    return static_cast<rlim_t>(number);
}

#ifdef __linux__
#ifdef SYS_access
constexpr auto accessCall = SYS_access;
#else
constexpr auto accessCall = SYS_faccessat;
#endif

// From now on every file seems to be missing, for ordinary users too and in any container.
bool hideFiles()
{
    constexpr auto missing = SECCOMP_RET_ERRNO | ENOENT;
    std::array filter{
        sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 2, 0),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_faccessat, 1, 0),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, accessCall, 0, 1),
        sock_filter BPF_STMT(BPF_RET | BPF_K, missing),
        sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0
        && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}
#endif

} // namespace

class TestLaunchFailure : public QObject
{
    Q_OBJECT

    QTemporaryDir m_directory{QDir::tempPath() + u"/child ü XXXXXX"_s};
    std::vector<int> m_descriptors;

private slots:
    void init() { m_descriptors = openDescriptors(); }

    void cleanup()
    {
        QCOMPARE(openDescriptors(), m_descriptors);
        QVERIFY(noChildren());
    }

    void launchFailures_data()
    {
        QTest::addColumn<Bytes>("program");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("reason");

        const QFile::Permissions plain = QFile::ReadOwner | QFile::WriteOwner;
        const QFile::Permissions executable = plain | QFile::ExeOwner;
        const Bytes shell = "/bin/sh"_ba;
        const Bytes plainFile = writtenFile(m_directory, u"plain"_s, "#!/bin/sh\n", plain);
        const Bytes noProgram =
            writtenFile(m_directory, u"no program"_s, "echo this is run by no shell\n", executable);
        const Bytes empty = writtenFile(m_directory, u"empty"_s, "", executable);
        const Bytes orphan = writtenFile(m_directory, u"orphan"_s, "#!/nowhere/interpreter\n", executable);
        const Bytes forbidden = writtenFile(m_directory, u"forbidden"_s, "#!/etc/passwd\n", executable);
        const QString dangling = m_directory.filePath(u"dangling"_s);
        const QString loop = m_directory.filePath(u"loop"_s);
        QVERIFY(QFile::link(m_directory.filePath(u"missing"_s), dangling));
        QVERIFY(QFile::link(loop, loop));

        QTest::newRow("missing file")
            << "/nowhere/at all"_ba << QStringList{} << u"the file does not exist"_s;
        QTest::newRow("empty path") << Bytes() << QStringList{} << u"the file does not exist"_s;
        QTest::newRow("dangling link")
            << QFile::encodeName(dangling) << QStringList{} << u"the file does not exist"_s;
        QTest::newRow("link to itself")
            << QFile::encodeName(loop) << QStringList{} << u"the path has too many symbolic links"_s;
        QTest::newRow("below a file")
            << plainFile + "/x"_ba << QStringList{} << u"a part of the path is not a directory"_s;
        QTest::newRow("path too long")
            << Bytes(5000, '/') + 'x' << QStringList{} << u"the path is too long"_s;
        QTest::newRow("not executable") << plainFile << QStringList{} << u"the file is not executable"_s;
        QTest::newRow("directory") << QFile::encodeName(m_directory.path()) << QStringList{}
                                   << u"the path is a directory"_s;
        QTest::newRow("no program") << noProgram << QStringList{}
                                    << u"the file has no format that this system can run"_s;
        QTest::newRow("empty file") << empty << QStringList{}
                                    << u"the file has no format that this system can run"_s;
        QTest::newRow("interpreter missing")
            << orphan << QStringList{}
            << u"the interpreter or loader that the file asks for does not exist"_s;
        QTest::newRow("interpreter not executable") << forbidden << QStringList{} << u"permission denied"_s;
        QTest::newRow("arguments too long")
            << shell << QStringList{QString(8 << 20, u'x')} << u"the argument list is too long"_s;
        QTest::newRow("NUL in an argument") << shell << QStringList{u"-c"_s, u"echo\0x"_s}
                                            << u"the path or an argument contains a NUL character"_s;
        QTest::newRow("NUL in the path")
            << "/bin/sh\0x"_ba << QStringList{} << u"the path or an argument contains a NUL character"_s;
    }

    void launchFailures()
    {
        QFETCH(Bytes, program);
        QFETCH(QStringList, arguments);
        QFETCH(QString, reason);
        const ChildResult result = runChild(program, arguments);
        QVERIFY(!result.launched());
        QCOMPARE(result.launchError, reason);
        QCOMPARE(result.output, Bytes());
    }

#ifdef __linux__
    void aProgramThatIsBeingWritten()
    {
        QFile program(m_directory.filePath(u"copied"_s));
        QVERIFY(QFile::copy(u"/bin/sh"_s, program.fileName()));
        QVERIFY(program.open(QFile::Append));
        QCOMPARE(runChild(QFile::encodeName(program.fileName()), {}).launchError,
                 u"the file is open for writing"_s);
    }
#endif

    // Each end of the output moves to a number above those of standard streams that are closed.
    void tooFewDescriptors_data()
    {
        QTest::addColumn<bool>("streamsAreClosed");
        QTest::addColumn<int>("left");
        QTest::addColumn<Bytes>("reason");
        const Bytes noneLeft = "this program has no file descriptors left"_ba;
        QTest::newRow("none left") << false << 0 << noneLeft;
        QTest::newRow("one left") << false << 1 << noneLeft;
        QTest::newRow("two are enough") << false << 2 << ""_ba;
        QTest::newRow("only those of two streams left") << true << 2 << noneLeft;
        QTest::newRow("one more left") << true << 3 << noneLeft;
        QTest::newRow("two more are enough") << true << 4 << ""_ba;
    }

    void tooFewDescriptors()
    {
        QFETCH(bool, streamsAreClosed);
        QFETCH(int, left);
        QFETCH(Bytes, reason);
        const Bytes result = launchErrorInFork([streamsAreClosed, left] {
            if (streamsAreClosed) {
                close(STDIN_FILENO);
                close(STDOUT_FILENO);
            }
            return limit(RLIMIT_NOFILE, limitLeaving(left));
        });
        QCOMPARE(result, reason);
    }

    void noProcessSlots()
    {
        const Bytes reason = launchErrorInFork([] { return becomeOrdinaryUser() && limit(RLIMIT_NPROC, 0); });
        QCOMPARE(reason, "no further process can be created at the moment"_ba);
    }

#ifdef __linux__
    // The program is there; what cannot be opened is the standard input that it would get.
    void noNullDevice()
    {
        QCOMPARE(launchErrorInFork(hideFiles), "/dev/null cannot be opened: the file does not exist"_ba);
    }
#endif

    void noMemory()
    {
        const Bytes reason = launchErrorInFork([] { return limit(RLIMIT_AS, 1); });
        QCOMPARE(reason, "not enough memory"_ba);
    }

    // An ordinary user's pipes count against a limit, behind which they stay small.
    void refusedPipeSizeIsNoFailure()
    {
        const Bytes reason = launchErrorInFork([] {
            for (int i = 0; i < 100; ++i) {
                std::array<int, 2> ends{};
                if (pipe(ends.data()) != 0) {
                    return false;
                }
#ifdef __linux__
                fcntl(ends[0], F_SETPIPE_SZ, 1 << 20);
#endif
            }
            return becomeOrdinaryUser();
        });
        QCOMPARE(reason, ""_ba);
    }
};

static const TestClass<TestLaunchFailure> testLaunchFailure("tst_launchfailure");

#include "tst_launchfailure.moc"
