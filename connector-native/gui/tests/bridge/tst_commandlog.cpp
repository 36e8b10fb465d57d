#include "bridge/commandlog.h"
#include "support/testprogram.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QSet>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

void insertMany(CommandLog &log, int count)
{
    for (int i = 0; i < count; ++i) {
        log.insertNewest(u"status"_s, u"connector_health=ready\n"_s);
    }
}

qint64 nanosecondsToInsert(CommandLog &log, int count)
{
    QElapsedTimer timer;
    timer.start();
    insertMany(log, count);
    return timer.nsecsElapsed();
}

} // namespace

class TestCommandLog : public QObject
{
    Q_OBJECT

private slots:
    void startsEmpty()
    {
        const CommandLog log;
        QCOMPARE(log.count(), 0);
        QCOMPARE(log.rowCount(), 0);
    }

    void newestEntryIsTheFirstRow()
    {
        CommandLog log;
        log.insertNewest(u"first"_s, u"1"_s);
        log.insertNewest(u"second"_s, u"2"_s);
        log.insertNewest(u"third"_s, u"3"_s);
        QCOMPARE(log.count(), 3);
        QCOMPARE(log.at(0).title, u"third"_s);
        QCOMPARE(log.at(1).title, u"second"_s);
        QCOMPARE(log.at(2).title, u"first"_s);
        QCOMPARE(log.at(2).output, u"1"_s);
    }

    void rolesGiveTitleAndOutput()
    {
        CommandLog log;
        log.insertNewest(u"first"_s, u"1"_s);
        log.insertNewest(u"second"_s, u"2"_s);
        QCOMPARE(log.data(log.index(0), CommandLog::TitleRole).toString(), u"second"_s);
        QCOMPARE(log.data(log.index(0), CommandLog::OutputRole).toString(), u"2"_s);
        QCOMPARE(log.data(log.index(1), CommandLog::TitleRole).toString(), u"first"_s);
        QCOMPARE(log.data(log.index(1), CommandLog::OutputRole).toString(), u"1"_s);
    }

    void roleNamesAreThoseOfTheView()
    {
        const QHash<int, QByteArray> names = CommandLog().roleNames();
        QCOMPARE(names.value(CommandLog::TitleRole), "title"_ba);
        QCOMPARE(names.value(CommandLog::OutputRole), "output"_ba);
    }

    void otherIndexesAndRolesGiveNothing()
    {
        CommandLog log;
        log.insertNewest(u"status"_s, u"text"_s);
        QVERIFY(!log.data(log.index(0), Qt::DisplayRole).isValid());
        QVERIFY(!log.data(log.index(1), CommandLog::TitleRole).isValid());
        QVERIFY(!log.data(QModelIndex(), CommandLog::TitleRole).isValid());
    }

    void entriesHaveNoRowsBelow()
    {
        CommandLog log;
        log.insertNewest(u"status"_s, u"text"_s);
        QCOMPARE(log.rowCount(log.index(0)), 0);
    }

    void idsAreFreshAndKept()
    {
        CommandLog log;
        log.insertNewest(u"same"_s, u"same"_s);
        const QUuid first = log.at(0).id;
        insertMany(log, 99);
        QSet<QUuid> ids;
        for (int row = 0; row < log.count(); ++row) {
            ids.insert(log.at(row).id);
        }
        QCOMPARE(ids.size(), 100);
        QVERIFY(!ids.contains(QUuid()));
        QCOMPARE(log.at(99).id, first);
        QCOMPARE(first.version(), QUuid::Random);
    }

    void textsAreKeptAsTheyAre_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << u""_s;
        QTest::newRow("blanks around") << u"  a \n\n"_s;
        QTest::newRow("carriage returns") << u"a\r\nb\r"_s;
        QTest::newRow("NUL") << u"a\0b"_s;
        QTest::newRow("markup") << u"<img src='x'>&amp;"_s;
        QTest::newRow("Unicode") << u"\uFEFFü😀\uFFFD"_s;
        QTest::newRow("long") << QString(1 << 20, u'x');
    }

    void textsAreKeptAsTheyAre()
    {
        QFETCH(QString, text);
        CommandLog log;
        log.insertNewest(text, text);
        QCOMPARE(log.at(0).title, text);
        QCOMPARE(log.at(0).output, text);
        QCOMPARE(log.data(log.index(0), CommandLog::TitleRole).toString(), text);
        QCOMPARE(log.data(log.index(0), CommandLog::OutputRole).toString(), text);
    }

    void eachEntryIsOneRowInsertedAtTheTop()
    {
        CommandLog log;
        const QSignalSpy inserted(&log, &QAbstractItemModel::rowsInserted);
        const QSignalSpy counted(&log, &CommandLog::countChanged);
        const QSignalSpy reset(&log, &QAbstractItemModel::modelReset);
        insertMany(log, 3);
        QCOMPARE(inserted.count(), 3);
        QCOMPARE(counted.count(), 3);
        QCOMPARE(reset.count(), 0);
        for (const QList<QVariant> &insertion : inserted) {
            QCOMPARE(insertion.at(1).toInt(), 0);
            QCOMPARE(insertion.at(2).toInt(), 0);
        }
    }

    void countIsChangedBeforeItIsNotified()
    {
        CommandLog log;
        QList<int> counts;
        connect(&log, &CommandLog::countChanged, this, [&] { counts.append(log.count()); });
        insertMany(log, 2);
        QCOMPARE(counts, QList({1, 2}));
    }

    void persistentIndexesMoveDown()
    {
        CommandLog log;
        log.insertNewest(u"kept"_s, QString());
        const QPersistentModelIndex kept = log.index(0);
        insertMany(log, 5);
        QCOMPARE(kept.row(), 5);
        QCOMPARE(kept.data(CommandLog::TitleRole).toString(), u"kept"_s);
    }

    void keepsTheModelContract()
    {
        CommandLog log;
        const QAbstractItemModelTester tester(&log, QAbstractItemModelTester::FailureReportingMode::QtTest);
        insertMany(log, 20);
        QCOMPARE(log.rowCount(), 20);
    }

    void insertionTakesConstantTime()
    {
        constexpr int tenth = 10'000;
        // Moving every older entry would make the last tenth many times as slow as the first.
        constexpr qint64 factor = 5;
        constexpr qint64 noise = 20'000'000;
        CommandLog log;
        const qint64 first = nanosecondsToInsert(log, tenth);
        insertMany(log, 8 * tenth);
        const qint64 last = nanosecondsToInsert(log, tenth);
        QCOMPARE(log.count(), 10 * tenth);
        QVERIFY2(last < factor * first + noise, qPrintable(u"%1 ns, then %2 ns"_s.arg(first).arg(last)));
    }
};

static const TestClass<TestCommandLog> testCommandLog("tst_commandlog");

#include "tst_commandlog.moc"
