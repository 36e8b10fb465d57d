#include "support/processortimer.h"
#include "support/testprogram.h"
#include "ui/scrolling/rowheights.h"

#include <QtCore/qrandom.h>

#include <algorithm>
#include <numeric>

namespace {

// The same thing, written down as plainly as can be.
class PlainHeights
{
public:
    PlainHeights(int count, double typical)
        : m_typical(typical)
        , m_heights(static_cast<std::size_t>(count), typical)
    {
    }

    void prependRow() { m_heights.insert(m_heights.begin(), m_typical); }
    void setHeight(int row, double height) { m_heights[static_cast<std::size_t>(row)] = height; }
    [[nodiscard]] int count() const { return static_cast<int>(m_heights.size()); }
    [[nodiscard]] double height(int row) const { return m_heights[static_cast<std::size_t>(row)]; }
    [[nodiscard]] double offset(int row) const
    {
        return std::accumulate(m_heights.begin(), m_heights.begin() + row, 0.0);
    }
    [[nodiscard]] int rowAt(double offset) const
    {
        int row = 0;
        while (row + 1 < count() && this->offset(row + 1) <= offset) {
            ++row;
        }
        return row;
    }

private:
    double m_typical;
    std::vector<double> m_heights;
};

// Quarters are exact in single precision, so sums can be compared exactly.
double anyHeight(QRandomGenerator &random)
{
    return random.bounded(1, 4000) / 4.0;
}

} // namespace

class TestRowHeights : public QObject
{
    Q_OBJECT

    static void compare(const RowHeights &heights, const PlainHeights &plain)
    {
        QCOMPARE(heights.count(), plain.count());
        for (int row = 0; row < plain.count(); ++row) {
            QCOMPARE(heights.height(row), plain.height(row));
            QCOMPARE(heights.offset(row), plain.offset(row));
            QCOMPARE(heights.rowAt(plain.offset(row)), plain.rowAt(plain.offset(row)));
            const double inside = plain.offset(row) + plain.height(row) / 2;
            QCOMPARE(heights.rowAt(inside), row);
        }
        QCOMPARE(heights.offset(plain.count()), plain.offset(plain.count()));
    }

private slots:
    void randomOperationsAgreeWithAPlainList_data()
    {
        QTest::addColumn<quint32>("seed");
        QTest::addColumn<int>("rows");

        QTest::newRow("grown from nothing") << 1U << 0;
        QTest::newRow("grown from one row") << 2U << 1;
        QTest::newRow("grown from a power of two") << 3U << 64;
        QTest::newRow("grown from an odd number") << 4U << 77;
    }

    void randomOperationsAgreeWithAPlainList()
    {
        QFETCH(const quint32, seed);
        QFETCH(const int, rows);
        constexpr double typical = 40.25;
        QRandomGenerator random(seed);
        RowHeights heights;
        heights.reset(rows, typical);
        PlainHeights plain(rows, typical);

        for (int step = 0; step < 300; ++step) {
            if (plain.count() == 0 || random.bounded(3) == 0) {
                heights.prependRow();
                plain.prependRow();
            } else {
                const int row = random.bounded(plain.count());
                const double height = anyHeight(random);
                heights.setHeight(row, height);
                plain.setHeight(row, height);
            }
            if (step % 10 == 0) {
                compare(heights, plain);
            }
        }
        compare(heights, plain);
    }

    void resetForgetsMeasuredHeights()
    {
        RowHeights heights;
        heights.reset(5, 10);
        heights.setHeight(3, 99);
        heights.reset(4, 20);
        compare(heights, PlainHeights(4, 20));
        heights.reset(0, 20);
        QCOMPARE(heights.count(), 0);
        QCOMPARE(heights.offset(0), 0.0);
    }

    void aPrependedRowIsTypicalAndMovesTheOthersDown()
    {
        RowHeights heights;
        heights.reset(2, 10);
        heights.setHeight(0, 50);
        heights.prependRow();
        QCOMPARE(heights.height(0), 10.0);
        QCOMPARE(heights.height(1), 50.0);
        QCOMPARE(heights.offset(2), 60.0);
    }

    void offsetsBeyondTheEndsGiveTheNearestRow()
    {
        RowHeights heights;
        heights.reset(3, 10);
        QCOMPARE(heights.rowAt(-1000), 0);
        QCOMPARE(heights.rowAt(30), 2);
        QCOMPARE(heights.rowAt(1e9), 2);
    }

    void aRowBeginsAtItsOffset()
    {
        RowHeights heights;
        heights.reset(3, 10);
        QCOMPARE(heights.rowAt(10), 1);
        QCOMPARE(heights.rowAt(9.75), 0);
    }

    void aMillionRowsAreQuick()
    {
        constexpr int rows = 1'000'000;
        const ProcessorTimer timer;
        RowHeights heights;
        heights.reset(0, 100);
        for (int row = 0; row < rows; ++row) {
            heights.prependRow();
        }
        QRandomGenerator random(7);
        for (int step = 0; step < 10'000; ++step) {
            const int row = random.bounded(rows);
            heights.setHeight(row, anyHeight(random));
            QCOMPARE(heights.rowAt(heights.offset(row)), row);
        }
        // Whatever took linear time for each step would take minutes.
        QVERIFY2(timer.elapsed() < 10'000, qPrintable(QString::number(timer.elapsed())));
    }
};

static const TestClass<TestRowHeights> testRowHeights("tst_rowheights");

#include "tst_rowheights.moc"
