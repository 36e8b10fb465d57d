#include "bridge/coredumpfilter.h"
#include "childtesting.h"
#include "support/testprogram.h"

#include <sys/resource.h>

#include <atomic>
#include <thread>

namespace {

const QString filterPath = u"/proc/self/coredump_filter"_s;

Bytes filter()
{
    QFile file(filterPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : Bytes();
}

bool setFilter(const Bytes &value)
{
    QFile file(filterPath);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(value) == value.size();
}

Bytes filterOfChild()
{
    return runChild("/bin/cat"_ba, {filterPath}).output.trimmed();
}

} // namespace

// What is narrowed stays so for the life of a process, so each test does it in a copy of this one.
class TestCoreDumpFilter : public QObject
{
    Q_OBJECT

private slots:
    void onlyHeadersAreKept_data()
    {
        QTest::addColumn<Bytes>("before");
        QTest::addColumn<Bytes>("after");
        QTest::newRow("as systems have it") << "0x33"_ba
                                            << "00000010"_ba;
        QTest::newRow("everything") << "0x1ff"_ba
                                    << "00000010"_ba;
        QTest::newRow("not even headers") << "0x3"_ba
                                          << "00000000"_ba;
        QTest::newRow("nothing") << "0"_ba
                                 << "00000000"_ba;
    }

    void onlyHeadersAreKept()
    {
        QFETCH(Bytes, before);
        QFETCH(Bytes, after);
        const Bytes found = inFork([&] {
            const bool isSet = setFilter(before);
            keepMemoryOutOfCoreDumps();
            return isSet ? filter() : "not set"_ba;
        });
        QCOMPARE(found, after);
    }

    // The filter's file then gets the number of one of them.
    void aProgramWithoutStandardStreamsKeepsOnlyHeadersToo()
    {
        const Bytes found = inFork([] {
            const bool isSet = setFilter("0x33");
            close(STDIN_FILENO);
            close(STDOUT_FILENO);
            close(STDERR_FILENO);
            keepMemoryOutOfCoreDumps();
            return isSet ? filter() + ' ' + filterOfChild() + ' ' + filter() : "not set"_ba;
        });
        QCOMPARE(found, "00000010 00000033 00000010"_ba);
    }

    void childrenInheritWhatWasThereBefore_data()
    {
        QTest::addColumn<Bytes>("before");
        for (const char *value : {"00000033", "000001ff", "00000003", "00000000"}) {
            QTest::newRow(value) << Bytes(value);
        }
    }

    void childrenInheritWhatWasThereBefore()
    {
        QFETCH(Bytes, before);
        const Bytes found = inFork([&] {
            const bool isSet = setFilter("0x" + before);
            keepMemoryOutOfCoreDumps();
            return isSet ? filterOfChild() + ' ' + filterOfChild() : "not set"_ba;
        });
        QCOMPARE(found, before + ' ' + before);
    }

    void isNarrowAgainAfterARun_data()
    {
        QTest::addColumn<Bytes>("program");
        QTest::newRow("that worked") << "/bin/true"_ba;
        QTest::newRow("that could not be started") << "/nowhere/at/all"_ba;
    }

    void isNarrowAgainAfterARun()
    {
        QFETCH(Bytes, program);
        const Bytes found = inFork([&] {
            keepMemoryOutOfCoreDumps();
            static_cast<void>(runChild(program, {}));
            return filter();
        });
        QCOMPARE(found, "00000010"_ba);
    }

    // A run needs two, and there is not one more.
    void childrenInheritItWithoutDescriptorsToSpare()
    {
        const Bytes before = filter();
        const Bytes found = inFork([] {
            keepMemoryOutOfCoreDumps();
            const int highest = openDescriptors().back();
            const rlimit few{static_cast<rlim_t>(highest) + 4, static_cast<rlim_t>(highest) + 4};
            while (open("/dev/null", O_RDONLY) < highest) { }
            return setrlimit(RLIMIT_NOFILE, &few) == 0 ? filterOfChild() : "not limited"_ba;
        });
        QCOMPARE(found, before);
    }

    // While one thread starts a child, another one must not narrow what that child inherits.
    void childrenOfSeveralThreadsInheritIt()
    {
        const Bytes found = inFork([] {
            const bool isSet = setFilter("0x33");
            keepMemoryOutOfCoreDumps();
            std::atomic<int> wrong = isSet ? 0 : -1;
            const auto run = [&wrong] {
                for (int i = 0; i < 50; ++i) {
                    wrong += filterOfChild() == "00000033" ? 0 : 1;
                }
            };
            std::thread other(run);
            run();
            other.join();
            return Bytes::number(wrong) + " wrong, then " + filter();
        });
        QCOMPARE(found, "0 wrong, then 00000010"_ba);
    }

    void unlessAskedForNothingIsChanged()
    {
        const Bytes before = filter();
        QCOMPARE(filterOfChild(), before);
        QCOMPARE(filter(), before);
        QVERIFY(before != "00000010");
    }
};

static const TestClass<TestCoreDumpFilter> testCoreDumpFilter("tst_coredumpfilter");

#include "tst_coredumpfilter.moc"
