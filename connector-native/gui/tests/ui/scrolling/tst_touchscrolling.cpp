#include "finger.h"
#include "support/testprogram.h"
#include "ui/controls/pressarea.h"
#include "ui/scrolling/scrollarea.h"

#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlengine.h>
#include <QtQuick/qquickwindow.h>
#include <QtTest/qsignalspy.h>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

// A page with a button on its left, and a panel with a text on its right.
constexpr auto page = R"(
import QtQuick
import BrindlecoveConnectorGUI

Window {
    property alias page: page
    property alias panel: panel
    property alias text: text
    property int presses: 0

    height: 300
    visible: true
    width: 400

    ScrollArea {
        id: page

        anchors.fill: parent

        content: Item {
            height: 100000

            PressArea {
                height: 100000
                width: 200

                onTriggered: presses += 1
            }

            ScrollArea {
                id: panel

                height: 150
                width: 200
                x: 200
                y: 100

                content: OutputText {
                    id: text

                    accessibleTitle: ""
                    source: "one two three four\n".repeat(40)
                }

                TouchScrolling {
                    area: panel
                }
            }
        }

        TouchScrolling {
            area: page
        }
    }
}
)";

constexpr QPoint onButton(100, 150);
constexpr QPoint onPanel(300, 200);

} // namespace

// A finger on the screen.
class TestTouchScrolling : public QObject
{
    Q_OBJECT

    QQmlEngine m_engine;
    Finger m_finger;
    std::unique_ptr<QQuickWindow> m_window;
    ScrollArea *m_page = nullptr;
    ScrollArea *m_panel = nullptr;

    // As the handler hands it on, at a speed that does not depend on the machine's: in pixels per second.
    void flick(qreal speed)
    {
        m_page->beginDrag();
        m_page->dragTo(0, -100);
        m_page->endDrag(0, -speed);
    }

    // Still runs some seconds later, when a busy machine comes to look. Returns whether it does run.
    [[nodiscard]] bool flickFar()
    {
        flick(10000);
        const qreal left = m_page->contentY();
        return QTest::qWaitFor([&] { return m_page->contentY() > left; });
    }

    [[nodiscard]] int presses() const { return m_window->property("presses").toInt(); }

private slots:
    void initTestCase() { m_engine.addImportPath(u":/"_s); }

    void init()
    {
        QQmlComponent component(&m_engine);
        component.setData(page, {});
        m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
        QVERIFY2(m_window, qPrintable(component.errorString()));
        m_page = m_window->property("page").value<ScrollArea *>();
        m_panel = m_window->property("panel").value<ScrollArea *>();
        m_finger.setWindow(m_window.get());
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup() { m_window.reset(); }

    void aTapPresses()
    {
        m_finger.press(onButton);
        m_finger.release(onButton);
        QCOMPARE(presses(), 1);
        QCOMPARE(m_page->contentY(), 0.0);
    }

    void whatIsHalfInViewStaysUnderTheFinger()
    {
        PressArea button(m_page->content());
        button.setPosition({100, 280});
        button.setSize({100, 40});
        QSignalSpy triggered(&button, &PressArea::triggered);
        const QPoint at(150, 290);
        m_finger.press(at);
        (void)m_window->grabWindow();
        m_finger.release(at);
        QCOMPARE(triggered.size(), 1);
        QVERIFY(button.hasActiveFocus());
        (void)m_window->grabWindow();
        QVERIFY(m_page->contentY() > 0);
    }

    void aDragScrollsThePageAndPressesNothing()
    {
        m_finger.drag(onButton, onButton - QPoint(0, 100));
        QTRY_COMPARE(m_page->contentY(), 100.0);
        m_finger.rest(onButton - QPoint(0, 100));
        m_finger.release(onButton - QPoint(0, 100));
        QCOMPARE(presses(), 0);
        QVERIFY(!QTest::qWaitFor([this] { return m_page->contentY() > 110; }, 200));
    }

    // The square of its speed over twice the deceleration, which is 1500 pixels per second squared.
    void aFlickRunsOnAndEnds()
    {
        constexpr qreal distance = 1000.0 * 1000 / (2 * 1500);
        for (const int flicks : {1, 2, 3}) {
            flick(1000);
            const qreal end = std::round(flicks * (100 + distance));
            QTRY_COMPARE(m_page->contentY(), end);
            QVERIFY(!QTest::qWaitFor([&] { return m_page->contentY() != end; }, 50));
        }
        QCOMPARE(presses(), 0);
    }

    void aFlickIsNeverFasterThanTheFinger()
    {
        QElapsedTimer timer;
        timer.start();
        flick(10000);
        const qreal left = m_page->contentY();
        QTRY_VERIFY(m_page->contentY() > left + 2000);
        // 200 ms and more; timers are coarse.
        QVERIFY2(timer.elapsed() > 150, qPrintable(QString::number(timer.elapsed())));
    }

    void theWheelEndsAFlick()
    {
        QVERIFY(flickFar());
        QWheelEvent wheel(onButton, m_window->mapToGlobal(onButton), {0, -10}, {0, -10}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_window.get(), &wheel);
        const qreal stopped = m_page->contentY();
        QVERIFY(!QTest::qWaitFor([&] { return m_page->contentY() != stopped; }, 150));
    }

    void aTouchStopsAFlickAndPressesNothing()
    {
        // Also the next one.
        for (int i = 0; i < 2; ++i) {
            QVERIFY(flickFar());
            m_finger.press(onButton);
            const qreal stopped = m_page->contentY();
            QVERIFY(!QTest::qWaitFor([&] { return m_page->contentY() != stopped; }, 150));
            m_finger.release(onButton);
            QCOMPARE(presses(), 0);
            QCOMPARE(m_page->contentY(), stopped);
        }
        // Elsewhere, so that it is not the second of a double tap.
        m_finger.press(onButton + QPoint(0, 100));
        m_finger.release(onButton + QPoint(0, 100));
        QCOMPARE(presses(), 1);
    }

    void aDragThatStopsAFlickLeavesNothingBehind()
    {
        QVERIFY(flickFar());
        m_finger.drag(onButton, onButton - QPoint(0, 60));
        m_finger.rest(onButton - QPoint(0, 60));
        m_finger.release(onButton - QPoint(0, 60));
        QCOMPARE(presses(), 0);
        m_finger.tap(onButton + QPoint(0, 100));
        QCOMPARE(presses(), 1);
    }

    void aTouchAfterAFlickThatTheScrollBarEndedPresses()
    {
        QVERIFY(flickFar());
        m_page->setContentY(0);
        m_finger.press(onButton);
        m_finger.release(onButton);
        QCOMPARE(presses(), 1);
    }

    void aFlickGoesOnFromTheNextDrag()
    {
        QVERIFY(flickFar());
        m_finger.press(onButton);
        const qreal stopped = m_page->contentY();
        m_finger.release(onButton);
        m_finger.drag(onButton, onButton - QPoint(0, 60));
        QTRY_COMPARE(m_page->contentY(), stopped + 60);
        m_finger.release(onButton - QPoint(0, 60));
        QCOMPARE(presses(), 0);
    }

    void aDragInAPanelScrollsThePanel()
    {
        m_finger.drag(onPanel, onPanel - QPoint(0, 80));
        QTRY_COMPARE(m_panel->contentY(), 80.0);
        QCOMPARE(m_page->contentY(), 0.0);
        // It goes on there when it leaves the panel, and when the panel ends.
        m_finger.move(onPanel - QPoint(0, 150));
        QTRY_COMPARE(m_panel->contentY(), 150.0);
        m_finger.move(onPanel + QPoint(0, 40));
        QTRY_COMPARE(m_panel->contentY(), 0.0);
        QCOMPARE(m_page->contentY(), 0.0);
        m_finger.release(onPanel + QPoint(0, 40));
        QVERIFY(
            m_window->property("text").value<QQuickItem *>()->property("selectedText").toString().isEmpty());
    }

    void aDragInAPanelAtItsEndScrollsThePage()
    {
        m_panel->setContentY(m_panel->maximumY());
        m_finger.drag(onPanel, onPanel - QPoint(0, 80));
        QTRY_COMPARE(m_page->contentY(), 80.0);
        QCOMPARE(m_panel->contentY(), m_panel->maximumY());
        m_finger.release(onPanel - QPoint(0, 80));
    }

    void aMouseDragScrollsNothing()
    {
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, onButton);
        for (int y = 0; y <= 100; y += 10) {
            QTest::mouseMove(m_window.get(), onButton - QPoint(0, y));
        }
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, onButton - QPoint(0, 100));
        QCOMPARE(m_page->contentY(), 0.0);
        QCOMPARE(presses(), 1);
    }

    void aFingerThatMovesSidewaysWhereNothingIsWiderStillPresses()
    {
        m_finger.drag(onButton - QPoint(30, 0), onButton + QPoint(30, 0));
        m_finger.release(onButton + QPoint(30, 0));
        QCOMPARE(presses(), 1);
    }

    void aDragSidewaysScrollsWhatIsWider()
    {
        m_page->content()->setImplicitWidth(900);
        m_finger.drag({150, 20}, {50, 20});
        QTRY_COMPARE(m_page->contentX(), 100.0);
        QCOMPARE(m_page->contentY(), 0.0);
        m_finger.release({50, 20});
    }
};

static const TestClass<TestTouchScrolling> testTouchScrolling("tst_touchscrolling");

#include "tst_touchscrolling.moc"
