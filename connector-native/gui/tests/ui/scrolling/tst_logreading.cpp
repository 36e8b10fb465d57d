#include "logcolumntest.h"
#include "support/testprogram.h"

using namespace Qt::StringLiterals;

// What the user reads stays where it is, whatever is measured or comes in.
class TestLogReading : public LogColumnTest
{
    Q_OBJECT

private slots:
    void newRowsWhileReadingMoveNothing_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<qreal>("from");
        QTest::newRow("typical rows") << 60 << 5000.0;
        QTest::newRow("low rows") << 5 << 5000.0;
        QTest::newRow("high rows") << 2000 << 5000.0;
        QTest::newRow("with the newest row half in view") << 60 << 75.0;
        QTest::newRow("with its first pixel out of view") << 60 << columnTop + 1;
        QTest::newRow("with only its last pixels in view") << 300 << columnTop + 60;
        QTest::newRow("at the end") << 200 << 1e9;
    }

    void newRowsWhileReadingMoveNothing()
    {
        QFETCH(const int, height);
        QFETCH(const qreal, from);
        fill(1000, [](int age) { return 20 + age % 90; });
        scrollTo(from);
        scrollTo(from);
        const QList<ShownRow> before = shown();
        QVERIFY(!before.isEmpty());
        for (int round = 0; round < 5; ++round) {
            add(height);
            // At once and not only after the next frame, which would be seen as a jump.
            QCOMPARE(shown(), before);
            settle();
            QCOMPARE(shown(), before);
        }
    }

    void aNewRowMovesNothingWhileTheOnlyOneIsRead()
    {
        fill(1, [](int) { return 1000; });
        scrollTo(columnTop + 300);
        const QList<ShownRow> before = shown();
        add(60);
        QCOMPARE(shown(), before);
    }

    void aNewRowIsSeenWhenTheTopIs()
    {
        fill(100, [](int) { return 60; });
        for (const qreal y : {0.0, 30.0, columnTop}) {
            scrollTo(y);
            add(80);
            settle();
            QCOMPARE(m_area->contentY(), y);
            const std::optional<ShownRow> newest = shown(QString::number(m_log->count() - 1));
            QVERIFY(newest.has_value());
            QCOMPARE(newest->top, columnTop - y);
            verifyContiguous();
        }
    }

    void scrollingUpIntoUnseenRowsMovesByTheStepExactly_data()
    {
        QTest::addColumn<int>("height");
        QTest::newRow("rows lower than assumed") << 25;
        QTest::newRow("rows as high as assumed") << 60;
        QTest::newRow("rows higher than assumed") << 170;
        QTest::newRow("rows higher than the view") << 700;
    }

    void scrollingUpIntoUnseenRowsMovesByTheStepExactly()
    {
        QFETCH(const int, height);
        constexpr qreal distance = 20;
        fill(400, [height](int) { return height; });
        scrollTo(10'000);
        scrollTo(m_area->contentY());
        for (int step = 0; step < 100; ++step) {
            const QList<ShownRow> before = shown();
            scrollTo(m_area->contentY() - distance);
            const std::optional<ShownRow> after = shown(before.first().title);
            QVERIFY(after.has_value());
            QCOMPARE(after->top, before.first().top + distance);
            verifyContiguous();
        }
    }

    void scrollingDownIntoUnseenRowsMovesByTheStepExactly()
    {
        constexpr qreal distance = 60;
        fill(400, [](int age) { return 15 + age * 37 % 300; });
        for (int step = 0; step < 200; ++step) {
            const ShownRow before = shown().last();
            scrollTo(m_area->contentY() + distance);
            const std::optional<ShownRow> after = shown(before.title);
            QVERIFY(after.has_value());
            QCOMPARE(after->top, before.top - distance);
            verifyContiguous();
        }
    }

    void aPageUpSkipsNothing()
    {
        fill(100, [](int) { return 250; });
        for (int press = 0; press < 5; ++press) {
            QTest::keyClick(m_window.get(), Qt::Key_End);
            settle();
        }
        for (int press = 0; press < 10; ++press) {
            const ShownRow before = shown().first();
            QTest::keyClick(m_window.get(), Qt::Key_PageUp);
            settle();
            const std::optional<ShownRow> after = shown(before.title);
            QVERIFY2(after.has_value(), qPrintable(before.title + u" was first and is out of view"_s));
            QVERIFY(after->top > before.top);
        }
    }

    void aGrowingRowAboveTheViewMovesNothing()
    {
        fill(100, [](int) { return 60; });
        scrollTo(2000);
        const QList<ShownRow> before = shown();
        QQuickItem *above = rows().first();
        QVERIFY(above->property("title").toString() != before.first().title);
        above->setImplicitHeight(150);
        settle();
        QCOMPARE(shown(), before);
    }

    void theRowReadStaysInPlaceWhenTheWidthChanges()
    {
        fill(100, [](int) { return 60; });
        scrollTo(columnTop + 30 * (60 + spacing));
        const ShownRow before = shown().first();
        QCOMPARE(before.top, 0.0);
        for (const int width : {200, 800, 400}) {
            m_window->resize(width, 300);
            QTRY_COMPARE(m_area->width(), qreal(width));
            settle();
            const std::optional<ShownRow> after = shown(before.title);
            QVERIFY(after.has_value());
            QCOMPARE(after->top, before.top);
            verifyContiguous();
        }
    }

    void theBottomIsReachedAndStable_data()
    {
        QTest::addColumn<int>("height");
        QTest::newRow("rows lower than assumed") << 10;
        QTest::newRow("rows as high as assumed") << 60;
        QTest::newRow("rows higher than assumed") << 190;
        QTest::newRow("rows higher than the view") << 900;
    }

    void theBottomIsReachedAndStable()
    {
        QFETCH(const int, height);
        fill(1000, [height](int) { return height; });
        QTest::keyClick(m_window.get(), Qt::Key_End);
        settle();
        const std::optional<ShownRow> oldest = shown(u"0"_s);
        QVERIFY(oldest.has_value());
        QCOMPARE(oldest->bottom, m_area->height() - 30);
        QCOMPARE(m_area->contentY(), m_area->maximumY());
        const QList<ShownRow> before = shown();
        QTest::keyClick(m_window.get(), Qt::Key_End);
        settle();
        QCOMPARE(shown(), before);
    }
};

static const TestClass<TestLogReading> testLogReading("tst_logreading");

#include "tst_logreading.moc"
