#include "processes.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 pollingPause = 3000;
// What a busy machine, and looking on only now and then, may lose of a pause or add to it.
constexpr qint64 lost = 500;
constexpr qint64 added = 2500;

} // namespace

/// Who sets the clock while the window waits for a signature finds it waiting as before.
class TestClockSet : public WindowTest
{
    Q_OBJECT

    [[nodiscard]] QString shiftPath() const { return m_place.filePath(u"seconds"_s); }

    void setClock(qint64 seconds) const
    {
        QFile file(shiftPath());
        QVERIFY(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        QCOMPARE(file.write(reinterpret_cast<const char *>(&seconds), sizeof seconds),
                 qint64(sizeof seconds));
    }

    [[nodiscard]] qint64 secondsInAnotherProgram() const
    {
        QProcess date;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LD_PRELOAD"_s, QStringLiteral(CLOCK_SHIFT_LIBRARY));
        environment.insert(u"CLOCK_SHIFT_FILE"_s, shiftPath());
        date.setProcessEnvironment(environment);
        date.start(u"date"_s, {u"+%s"_s});
        date.waitForFinished();
        return date.readAll().trimmed().toLongLong();
    }

    [[nodiscard]] qsizetype rounds() const
    {
        return application().calls().count(QStringList(u"server-health"_s));
    }

    // Until a round is over, and its pause has just begun.
    void awaitRound(qsizetype count) const
    {
        QTRY_COMPARE_WITH_TIMEOUT(rounds(), count, pollingPause + added);
        QTRY_COMPARE(application().calls().constLast(), QStringList(u"status"_s));
        QTRY_COMPARE(childrenOf(application().processId()), 0);
    }

    QTemporaryDir m_place;

private slots:
    void init() override
    {
        setClock(0);
        renew();
        QVERIFY(application().setFaults("PENDING_CHECKS=1000\n"));
        application().preload(QStringLiteral(CLOCK_SHIFT_LIBRARY));
        application().setEnvironment(u"CLOCK_SHIFT_FILE"_s, shiftPath());
        start();
        QVERIFY(processFile(application().processId(), u"maps"_s).contains(CLOCK_SHIFT_LIBRARY));
    }

    void neitherStopsNorHurriesThePolling_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::newRow("set back by an hour") << qint64(-3600);
        QTest::newRow("set back by ten seconds") << qint64(-10);
        QTest::newRow("set forward by a day") << qint64(86400);
    }

    void neitherStopsNorHurriesThePolling()
    {
        QFETCH(const qint64, seconds);
        QVERIFY(window().fill(window().tokenField(), u"abc"_s));
        QVERIFY(window().clickButton(u"Claim token"_s));
        const qsizetype roundsBefore = rounds();
        awaitRound(std::max(roundsBefore, qsizetype(2)) + 1);

        QElapsedTimer sincePause;
        sincePause.start();
        const qint64 timeBefore = secondsInAnotherProgram();
        setClock(seconds);
        QVERIFY(qAbs(secondsInAnotherProgram() - timeBefore - seconds) <= 1);
        const qsizetype calls = application().calls().size();
        QTRY_VERIFY_WITH_TIMEOUT(application().calls().size() > calls, pollingPause + added);
        const qint64 waited = sincePause.elapsed();
        QVERIFY2(waited >= pollingPause - lost, qPrintable(QString::number(waited)));
        QVERIFY2(waited <= pollingPause + added, qPrintable(QString::number(waited)));
        QTRY_COMPARE(window().tileWord(u"Binding"_s), u"pending signature"_s);
    }
};

static const TestClass<TestClockSet> testClockSet("tst_clockset");

#include "tst_clockset.moc"
