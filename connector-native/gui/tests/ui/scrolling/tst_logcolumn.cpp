#include "logcolumntest.h"
#include "support/testprogram.h"

#include <QtGui/qstandarditemmodel.h>
#include <QtQml/qqmlcomponent.h>
#include <QtTest/qsignalspy.h>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int manyRows = 50'000;

} // namespace

// Which rows there are, and in which order.
class TestLogColumn : public LogColumnTest
{
    Q_OBJECT

    [[nodiscard]] QStringList titles() const
    {
        QStringList titles;
        for (const QQuickItem *item : rows()) {
            titles.append(item->property("title").toString());
        }
        return titles;
    }

    [[nodiscard]] QString focusedTitle() const
    {
        return m_window->activeFocusItem()->parentItem()->property("title").toString();
    }

    void verifyNothingIsTooFarForSinglePrecision() const
    {
        constexpr qreal exact = 1 << 24;
        for (const ShownRow &shownRow : shown()) {
            QVERIFY(qAbs(row(shownRow.title)->y()) < exact);
        }
        QVERIFY(qAbs(m_area->content()->y()) < exact);
        QVERIFY(m_area->content()->height() < exact);
    }

private slots:
    void onlyRowsNearTheViewportExist_data()
    {
        QTest::addColumn<qreal>("part");
        QTest::newRow("at the top") << 0.0;
        QTest::newRow("in the middle") << 0.5;
        QTest::newRow("at the end") << 1.0;
    }

    void onlyRowsNearTheViewportExist()
    {
        QFETCH(const qreal, part);
        fill(manyRows, [](int age) { return 20 + age % 90; });
        scrollTo(m_area->maximumY() * part);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!rows().isEmpty());
        QVERIFY2(m_column->childItems().size() < 20,
                 qPrintable(QString::number(m_column->childItems().size())));
        verifyContiguous();
    }

    void rowsFillTheViewWithoutGaps()
    {
        // Much lower than typical: measuring brings further rows into view.
        fill(500, [](int) { return 5; });
        verifyContiguous();
        QVERIFY(shown().size() > 15);
        for (int y = 0; y < 2000; y += 333) {
            scrollTo(y);
            verifyContiguous();
        }
    }

    void theOrderOfItemsIsTheOrderOnTheScreen()
    {
        fill(1000, [](int age) { return 20 + age % 90; });
        for (const qreal y : {3000.0, 2800.0, 2600.0, 2900.0, 0.0, 20000.0, 19800.0, 20300.0}) {
            scrollTo(y);
            add(33);
            settle();
            QList<qreal> tops;
            for (const QQuickItem *item : rows()) {
                tops.append(item->y());
            }
            QVERIFY(tops.size() > 2);
            QVERIFY(std::is_sorted(tops.cbegin(), tops.cend()));
        }
    }

    void theFocusedRowIsKept()
    {
        fill(1000, [](int) { return 60; });
        const QPointer<QQuickItem> focused = row(u"997"_s);
        QVERIFY(focused);
        focused->childItems().constFirst()->forceActiveFocus(Qt::TabFocusReason);
        settle();
        scrollTo(30'000);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(focused && focused->isVisible());
        QVERIFY(focused->childItems().constFirst()->hasActiveFocus());
        QCOMPARE(focused->y(), 2 * (60 + spacing));
        add(60);
        settle();
        QCOMPARE(focused->y(), 3 * (60 + spacing));

        m_area->forceActiveFocus();
        scrollTo(20'000);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!focused);
    }

    void rowsFollowTheWidth()
    {
        fill(100, [](int) { return 60; });
        m_window->resize(800, 300);
        QTRY_COMPARE(m_area->width(), 800.0);
        settle();
        for (const QQuickItem *item : rows()) {
            QCOMPARE(item->width(), 800.0);
            QCOMPARE(item->height(), 30.0);
        }
        verifyContiguous();
    }

    void tabGoesThroughAllRowsInOrder()
    {
        fill(40, [](int age) { return 20 + age * 53 % 200; });
        for (int age = 39; age >= 0; --age) {
            QTest::keyClick(m_window.get(), Qt::Key_Tab);
            settle();
            const QQuickItem *focused = m_window->activeFocusItem()->parentItem();
            QCOMPARE(focused->property("title").toString(), QString::number(age));
            const qreal top = focused->mapToItem(m_area, QPointF()).y();
            QVERIFY(top >= 0);
            QVERIFY(top + focused->height() <= m_area->height());
        }
        for (int age = 1; age < 40; ++age) {
            QTest::keyClick(m_window.get(), Qt::Key_Backtab, Qt::ShiftModifier);
            settle();
            QCOMPARE(m_window->activeFocusItem()->parentItem()->property("title").toString(),
                     QString::number(age));
        }
    }

    void anEmptyColumnHasNoHeight()
    {
        fill(0, [](int) { return 0; });
        QCOMPARE(m_column->implicitHeight(), 0.0);
        add(70);
        settle();
        QCOMPARE(m_column->implicitHeight(), 70.0);
        QCOMPARE(shown().size(), 1);
    }

    // At its ends the Tab key comes in.
    void aColumnOutOfViewHasOnlyItsEnds()
    {
        m_column->setY(5000);
        fill(100, [](int) { return 60; });
        QCOMPARE(titles(), QStringList({u"99"_s, u"0"_s}));
        scrollTo(5000);
        verifyContiguous();
        scrollTo(0);
        QCOMPARE(titles(), QStringList({u"99"_s, u"0"_s}));
        // Also when it moves within a page that is as high as before.
        m_area->content()->setHeight(20'000);
        settle();
        m_column->setY(columnTop);
        settle();
        verifyContiguous();
    }

    void aViewportThatComesLaterIsFilled()
    {
        m_column->setViewport(nullptr);
        fill(100, [](int) { return 60; });
        QVERIFY(rows().isEmpty());
        m_column->setViewport(m_area);
        settle();
        verifyContiguous();
    }

    void theTabKeyComesInAtBothEndsOfAColumnOutOfView()
    {
        m_column->setY(5000);
        fill(100, [](int) { return 60; });
        m_area->forceActiveFocus();
        QTest::keyClick(m_window.get(), Qt::Key_Tab);
        QCOMPARE(focusedTitle(), u"99"_s);
        m_area->forceActiveFocus();
        QTest::keyClick(m_window.get(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(focusedTitle(), u"0"_s);
    }

    void theTabKeySkipsNothingBetweenTwoFrames()
    {
        fill(100, [](int) { return 200; });
        m_area->forceActiveFocus();
        for (int age = 99; age >= 0; --age) {
            QTest::keyClick(m_window.get(), Qt::Key_Tab);
            QCOMPARE(focusedTitle(), QString::number(age));
        }
        for (int age = 1; age < 100; ++age) {
            QTest::keyClick(m_window.get(), Qt::Key_Backtab, Qt::ShiftModifier);
            QCOMPARE(focusedTitle(), QString::number(age));
        }
    }

    void aViewportThatGrowsIsFilled()
    {
        m_window->resize(400, 100);
        QTRY_COMPARE(m_area->height(), 100.0);
        fill(200, [](int) { return 20; });
        for (const qreal y : {0.0, 1000.0}) {
            m_window->resize(400, 100);
            QTRY_COMPARE(m_area->height(), 100.0);
            scrollTo(y);
            m_window->resize(400, 700);
            QTRY_COMPARE(m_area->height(), 700.0);
            settle();
            verifyContiguous();
        }
    }

    void rowsOfHeightsThatAreNotWholeBeginAtWholePixels()
    {
        fill(20, [](int) { return 60; });
        row(u"19"_s)->setImplicitHeight(60.25);
        row(u"18"_s)->setImplicitHeight(40.75);
        settle();
        QCOMPARE(row(u"18"_s)->y(), 61 + spacing);
        QCOMPARE(row(u"17"_s)->y(), 61 + spacing + 41 + spacing);
    }

    void halfAMillionRowsAreExactAndReached()
    {
        constexpr int rows = 500'000;
        fill(rows, [](int age) { return 100 + age % 7; });
        QVERIFY(m_area->maximumY() > 30e6);
        QTest::keyClick(m_window.get(), Qt::Key_End);
        settle();
        QVERIFY(shown(u"0"_s));
        QCOMPARE(shown(u"0"_s)->bottom, m_area->height() - 30);
        verifyContiguous();
        for (const qreal part : {0.2, 0.5, 0.9, 0.01, 0.99}) {
            scrollTo(std::round(m_area->maximumY() * part));
            for (int pixel = 0; pixel < 3; ++pixel) {
                const QList<ShownRow> before = shown();
                scrollTo(m_area->contentY() + 1);
                QCOMPARE(shown(before.last().title)->top, before.last().top - 1);
                verifyContiguous();
            }
            verifyNothingIsTooFarForSinglePrecision();
        }
        scrollTo(0);
        QCOMPARE(shown().first().top, columnTop);

        // The focus goes through them both ways.
        for (const int age : {rows - 1000, rows / 2, 100}) {
            scrollTo(columnTop + (rows - 1.0 - age) * (60 + spacing));
            const int first = shown().first().title.toInt();
            row(shown().first().title)->childItems().constFirst()->forceActiveFocus(Qt::TabFocusReason);
            for (int next = 1; next < 40; ++next) {
                QTest::keyClick(m_window.get(), Qt::Key_Tab);
                settle();
                QCOMPARE(focusedTitle(), QString::number(first - next));
                QVERIFY(shown(focusedTitle()));
            }
            for (int next = 38; next > -40; --next) {
                QTest::keyClick(m_window.get(), Qt::Key_Backtab, Qt::ShiftModifier);
                settle();
                QCOMPARE(focusedTitle(), QString::number(first - next));
                QVERIFY(shown(focusedTitle()));
            }
        }
    }

    void aModelThatIsThereFirstIsShown()
    {
        QQmlEngine engine;
        engine.addImportPath(u":/"_s);
        QQmlComponent component(&engine);
        component.setData(R"(
            import QtQuick
            import BrindlecoveConnectorGUI
            LogColumn {
                typicalHeight: 60
                width: 400
                delegate: Item {
                    required property string title
                }
                model: ListModel {
                    ListElement { title: "newer" }
                    ListElement { title: "older" }
                }
            })",
                          QUrl());
        const std::unique_ptr<QObject> column(component.create());
        QVERIFY2(column, qPrintable(component.errorString()));
        QCOMPARE(column->property("implicitHeight").toReal(), 120.0);
        // Without a viewport none of it is in view.
        qobject_cast<QQuickItem *>(column.get())->setParentItem(m_window->contentItem());
        settle();
        QCOMPARE(qobject_cast<QQuickItem *>(column.get())->childItems().size(), 0);
    }

    void aModelThatIsNoLogStartsOver()
    {
        QStandardItemModel model;
        model.setItemRoleNames({{Qt::UserRole, "title"}, {Qt::UserRole + 1, "output"}});
        const auto append = [&model](const QString &title) {
            auto *item = new QStandardItem;
            item->setData(title, Qt::UserRole);
            item->setData(u"60"_s, Qt::UserRole + 1);
            model.appendRow(item);
        };
        append(u"1"_s);
        m_column->setModel(&model);
        settle();
        append(u"0"_s);
        settle();
        QCOMPARE(titles(), QStringList({u"1"_s, u"0"_s}));
        QCOMPARE(shown(u"0"_s)->top, columnTop + 60 + spacing);
        model.clear();
        settle();
        QVERIFY(rows().isEmpty());
        QCOMPARE(m_column->implicitHeight(), 0.0);
        m_column->setModel(nullptr);
    }

    void itSaysWhenItLeavesTheWindow()
    {
        const QSignalSpy spy(m_column, &QQuickItem::windowChanged);
        m_column->setParentItem(nullptr);
        QCOMPARE(spy.count(), 1);
    }

    void rowsStandRightBeforeTheNextFrame()
    {
        fill(500'000, [](int) { return 60; });
        const QQuickItem *newest = row(u"499999"_s);
        for (const qreal part : {0.5, 0.25, 1.0}) {
            m_area->setContentY(std::floor(m_area->maximumY() * part));
            QCOMPARE(newest->mapToItem(m_area, QPointF()).y(), columnTop - m_area->contentY());
        }
    }

    void rowsGoWithTheirColumn()
    {
        fill(3, [](int) { return 60; });
        const QPointer<QQuickItem> newest = row(u"2"_s);
        QVERIFY(newest);
        m_window.reset();
        QVERIFY(!newest);
    }

    void anotherModelStartsOver()
    {
        fill(100, [](int) { return 200; });
        scrollTo(3000);
        CommandLog other;
        other.insertNewest(u"only"_s, u"44"_s);
        m_column->setModel(&other);
        settle();
        QCOMPARE(m_column->implicitHeight(), 44.0);
        QCOMPARE(shown().size(), 1);
        QCOMPARE(shown().first().title, u"only"_s);
        add(10);
        settle();
        QCOMPARE(m_column->implicitHeight(), 44.0);
        m_column->setModel(nullptr);
    }

    void withoutAModelThereAreNoRows()
    {
        fill(100, [](int) { return 60; });
        m_column->setModel(nullptr);
        settle();
        QVERIFY(rows().isEmpty());
        QCOMPARE(m_column->implicitHeight(), 0.0);
        scrollTo(0);
    }

    void theTabKeyGoesOnFromARowThatNewOnesPushedOutOfView()
    {
        fill(30, [](int) { return 60; });
        QPointer<QQuickItem> focused = row(u"28"_s);
        QVERIFY(focused);
        focused->childItems().constFirst()->forceActiveFocus(Qt::TabFocusReason);
        for (int i = 0; i < 40; ++i) {
            add(60);
            settle();
        }
        QVERIFY(!shown(u"28"_s));
        for (const QString &neighbour : {u"29"_s, u"27"_s}) {
            QVERIFY2(row(neighbour), qPrintable(neighbour));
        }
        // The order of the items is the order in which the key goes through them.
        const QList<QQuickItem *> items = rows();
        const auto place = [&](const QString &title) { return items.indexOf(row(title)); };
        QCOMPARE(place(u"28"_s) - place(u"29"_s), 1);
        QCOMPARE(place(u"27"_s) - place(u"28"_s), 1);
    }

    void aFocusedRowGoesWithItsModel_data()
    {
        QTest::addColumn<int>("rowsOfTheNextModel");
        QTest::newRow("an empty model") << 0;
        QTest::newRow("a shorter model") << 1;
        QTest::newRow("a longer model") << 40;
    }

    void aFocusedRowGoesWithItsModel()
    {
        QFETCH(const int, rowsOfTheNextModel);
        fill(30, [](int) { return 60; });
        const QPointer<QQuickItem> focused = row(u"28"_s);
        QVERIFY(focused);
        focused->childItems().constFirst()->forceActiveFocus(Qt::TabFocusReason);

        CommandLog next;
        for (int i = 0; i < rowsOfTheNextModel; ++i) {
            next.insertNewest(u"next"_s, u"60"_s);
        }
        m_column->setModel(&next);
        settle();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (const QQuickItem *item : rows()) {
            QCOMPARE(item->property("title").toString(), u"next"_s);
        }
        QVERIFY(rows().size() <= rowsOfTheNextModel);
        m_area->forceActiveFocus();
        m_column->setModel(nullptr);
        settle();
    }
};

static const TestClass<TestLogColumn> testLogColumn("tst_logcolumn");

#include "tst_logcolumn.moc"
