#include "logcolumntest.h"
#include "support/testprogram.h"

#include <QtCore/qrandom.h>
#include <QtQml/qqmlproperty.h>

#include <algorithm>
#include <cmath>
#include <set>

using namespace Qt::StringLiterals;

namespace {

constexpr int steps = 10'000;
constexpr qreal typicalHeight = 60;

// A column that lays out every row, by the height that was last seen of it. Rows are named by their age.
class PlainColumn
{
public:
    explicit PlainColumn(qreal spacing)
        : m_spacing(spacing)
    {
    }

    void add() { m_heights.append(typicalHeight); }
    void setHeight(int age, qreal height) { m_heights[age] = height; }
    [[nodiscard]] int count() const { return static_cast<int>(m_heights.size()); }
    [[nodiscard]] qreal height(int age) const { return m_heights[age]; }

    [[nodiscard]] qreal top(int age) const
    {
        qreal top = 0;
        for (int newer = count() - 1; newer > age; --newer) {
            top += m_heights[newer] + m_spacing;
        }
        return top;
    }

    [[nodiscard]] qreal wholeHeight() const { return count() == 0 ? 0 : top(-1) - m_spacing; }

    [[nodiscard]] int ageAt(qreal y) const
    {
        int age = count() - 1;
        qreal bottom = m_heights[age] + m_spacing;
        while (age > 0 && bottom <= y) {
            --age;
            bottom += m_heights[age] + m_spacing;
        }
        return age;
    }

private:
    qreal m_spacing;
    QList<qreal> m_heights;
};

} // namespace

// Whatever happens to a log column, it is as tall as a plain one would be, each row is in the same place,
// what is read stays where it is, and no row exists that need not.
class TestLogAgainstPlain : public LogColumnTest
{
    Q_OBJECT

    PlainColumn m_plain{spacing};
    QRandomGenerator m_random{20260721};

    [[nodiscard]] static int ageOf(const QQuickItem *row) { return row->property("title").toInt(); }

    [[nodiscard]] int focusedAge() const
    {
        const QQuickItem *item = m_window->activeFocusItem();
        return item && item->parentItem() && item->parentItem()->parentItem() == m_column
            ? ageOf(item->parentItem())
            : -1;
    }

    void insert()
    {
        add(m_random.bounded(5, m_random.bounded(20) == 0 ? 1500 : 200));
        m_plain.add();
    }

    void resize() { m_area->setSize(QSizeF(m_random.bounded(3, 17) * 50, m_random.bounded(10, 500))); }

    void grow()
    {
        const QList<QQuickItem *> all = rows();
        all[m_random.bounded(all.size())]->setImplicitHeight(m_random.bounded(20, 1200) / 4.0);
    }

    void scroll()
    {
        const bool far = m_random.bounded(4) == 0;
        m_area->setContentY(far ? m_random.bounded(m_area->maximumY() + 1)
                                : m_area->contentY() + m_random.bounded(-400, 400));
    }

    void moveFocus()
    {
        const QList<QQuickItem *> all = rows();
        if (m_random.bounded(4) == 0) {
            m_area->forceActiveFocus();
            // What the focus has left behind is dropped in the next layout, which is not due yet.
            m_column->polish();
        } else {
            all[m_random.bounded(all.size())]->childItems().constFirst()->forceActiveFocus(
                Qt::TabFocusReason);
        }
    }

    // What has been laid out has been seen, also what was dropped again meanwhile.
    void learn()
    {
        QList<QQuickItem *> all = m_column->childItems();
        std::stable_partition(all.begin(), all.end(),
                              [](const QQuickItem *row) { return !row->isVisible(); });
        for (const QQuickItem *row : all) {
            m_plain.setHeight(ageOf(row), std::ceil(row->implicitHeight()));
        }
    }

    [[nodiscard]] std::set<int> wantedRows() const
    {
        std::set<int> wanted;
        const auto want = [&](int from, int to) {
            for (int age = std::max(from, 0); age <= std::min(to, m_plain.count() - 1); ++age) {
                wanted.insert(age);
            }
        };
        const qreal top = m_area->contentY() - columnTop;
        const qreal bottom = top + m_area->height();
        if (bottom >= 0 && top <= m_plain.wholeHeight()) {
            want(m_plain.ageAt(bottom) - 1, m_plain.ageAt(top) + 1);
        }
        if (focusedAge() >= 0) {
            want(focusedAge() - 1, focusedAge() + 1);
        }
        want(0, 0);
        want(m_plain.count() - 1, m_plain.count() - 1);
        return wanted;
    }

    void compare() const
    {
        QCOMPARE(m_column->implicitHeight(), m_plain.wholeHeight());
        std::set<int> there;
        for (const QQuickItem *row : rows()) {
            there.insert(ageOf(row));
            QCOMPARE(row->y(), m_plain.top(ageOf(row)));
            QCOMPARE(row->height(), row->implicitHeight());
            QCOMPARE(row->width(), m_column->width());
        }
        QVERIFY(there == wantedRows());
    }

private slots:
    void randomStepsAgreeWithAPlainColumn()
    {
        QVERIFY(QQmlProperty::write(m_area, u"anchors.fill"_s, QVariant::fromValue<QQuickItem *>(nullptr)));
        m_area->setSize({400, 300});
        m_column->setModel(m_log.get());
        insert();
        settle();
        learn();
        int held = 0;
        for (int step = 0; step < steps; ++step) {
            const qreal top = m_area->contentY() - columnTop;
            const bool reading = top > 0 && m_area->contentY() < m_area->maximumY();
            const int read = m_plain.ageAt(top);
            const qreal distance = m_plain.top(read) - top;

            const int kind = m_random.bounded(5);
            kind == 0       ? insert()
                : kind == 1 ? resize()
                : kind == 2 ? grow()
                : kind == 3 ? scroll()
                            : moveFocus();
            settle();
            learn();
            compare();
            if (QTest::currentTestFailed()) {
                QFAIL(qPrintable(u"after step %1 of kind %2"_s.arg(step).arg(kind)));
            }
            // What is read stays, as far as there is something below to fill the view with.
            const bool isMoved =
                kind > 2 || m_area->contentY() >= m_area->maximumY() || m_area->contentY() <= 0;
            if (reading && !isMoved) {
                ++held;
                QCOMPARE(m_plain.top(read) - (m_area->contentY() - columnTop), distance);
            }
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        QVERIFY(m_plain.count() > steps / 10);
        QVERIFY(held > steps / 4);
    }
};

static const TestClass<TestLogAgainstPlain> testLogAgainstPlain("tst_logagainstplain");

#include "tst_logagainstplain.moc"
