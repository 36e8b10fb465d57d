#include "scrolltesting.h"
#include "support/testprogram.h"

#include <QtGui/qguiapplication.h>
#include <QtGui/qstylehints.h>
#include <QtTest/qsignalspy.h>

using namespace Qt::StringLiterals;

namespace {

constexpr QPointF OverInner(200, 60);
constexpr QPointF OverOuter(200, 250);

// Turns the wheel by so many notches towards the user, or moves two fingers by so many pixels.
bool turnWheel(QQuickWindow &window, QPointF at, QPoint notches, QPoint pixels = {})
{
    QWheelEvent event(at, window.mapToGlobal(at), pixels, notches * -120, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&window, &event);
    return event.isAccepted();
}

qreal notch()
{
    return 20.0 * QGuiApplication::styleHints()->wheelScrollLines();
}

} // namespace

// Scrolling by wheel, touchpad and keys, and its bounds.
class TestScrollArea : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestWindow> m_window;
    ScrollArea *m_outer = nullptr;
    ScrollArea *m_inner = nullptr;

private slots:
    void init()
    {
        m_window = std::make_unique<TestWindow>();
        m_outer = addArea(m_window->contentItem(), {0, 0, 400, 300}, 1000);
        m_inner = addArea(m_outer->content(), {0, 0, 400, 120}, 300);
        QVERIFY(m_window->isReady());
    }

    void cleanup() { m_window.reset(); }

    void contentIsAsWideAsTheArea()
    {
        QCOMPARE(m_outer->content()->width(), 400.0);
        m_outer->setWidth(500);
        QCOMPARE(m_outer->content()->width(), 500.0);
    }

    void theWheelScrollsByLines()
    {
        QVERIFY(turnWheel(*m_window, OverOuter, {0, 1}));
        QCOMPARE(m_outer->contentY(), notch());
        QCOMPARE(m_outer->content()->y(), -notch());
        QVERIFY(turnWheel(*m_window, OverOuter, {0, -1}));
        QCOMPARE(m_outer->contentY(), 0.0);
    }

    void aTouchpadScrollsByPixels()
    {
        QVERIFY(turnWheel(*m_window, OverOuter, {0, 1}, {0, -7}));
        QCOMPARE(m_outer->contentY(), 7.0);
    }

    void theInnerAreaScrollsFirstAndTheOuterAfterIt()
    {
        while (m_inner->contentY() < m_inner->maximumY()) {
            const qreal before = m_inner->contentY();
            QVERIFY(turnWheel(*m_window, OverInner, {0, 1}));
            QVERIFY(m_inner->contentY() > before);
            QCOMPARE(m_outer->contentY(), 0.0);
        }
        QVERIFY(turnWheel(*m_window, OverInner, {0, 1}));
        QCOMPARE(m_inner->contentY(), m_inner->maximumY());
        QCOMPARE(m_outer->contentY(), notch());
    }

    void theInnerAreaGivesTheWheelOnAtItsTopToo()
    {
        m_outer->setContentY(40);
        QVERIFY(turnWheel(*m_window, {200, 20}, {0, -1}));
        QCOMPARE(m_outer->contentY(), 0.0);
    }

    void whatCannotScrollLeavesTheWheelAlone()
    {
        QVERIFY(!turnWheel(*m_window, OverOuter, {0, -1}));
        m_outer->setContentY(m_outer->maximumY());
        QVERIFY(!turnWheel(*m_window, OverOuter, {0, 1}));
    }

    void theWheelBesideTheInnerAreaScrollsTheOuterOne()
    {
        QVERIFY(turnWheel(*m_window, OverOuter, {0, 2}));
        QCOMPARE(m_inner->contentY(), 0.0);
        QCOMPARE(m_outer->contentY(), 2 * notch());
    }

    void keysScroll_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<qreal>("expected");
        QTest::newRow("Down by a line") << Qt::Key_Down << 320.0;
        QTest::newRow("Up by a line") << Qt::Key_Up << 280.0;
        QTest::newRow("Page Down by all but a line") << Qt::Key_PageDown << 580.0;
        QTest::newRow("Page Up by all but a line") << Qt::Key_PageUp << 20.0;
        QTest::newRow("End") << Qt::Key_End << 700.0;
        QTest::newRow("Home") << Qt::Key_Home << 0.0;
        QTest::newRow("another key") << Qt::Key_A << 300.0;
    }

    void keysScroll()
    {
        QFETCH(const Qt::Key, key);
        QFETCH(const qreal, expected);
        m_outer->setContentY(300);
        m_outer->forceActiveFocus();
        QTest::keyClick(m_window.get(), key);
        QCOMPARE(m_outer->contentY(), expected);
    }

    void aKeyThatScrollsNothingIsLeftToOthers()
    {
        m_outer->forceActiveFocus();
        QKeyEvent atTop(QEvent::KeyPress, Qt::Key_Home, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &atTop);
        QVERIFY(!atTop.isAccepted());
        QKeyEvent letter(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, u"a"_s);
        QCoreApplication::sendEvent(m_window.get(), &letter);
        QVERIFY(!letter.isAccepted());
    }

    void anInnerAreaAtItsEndLeavesTheKeyToTheOuterOne()
    {
        m_inner->forceActiveFocus();
        QTest::keyClick(m_window.get(), Qt::Key_End);
        QCOMPARE(m_inner->contentY(), m_inner->maximumY());
        QCOMPARE(m_outer->contentY(), 0.0);
        QTest::keyClick(m_window.get(), Qt::Key_Down);
        QCOMPARE(m_outer->contentY(), 20.0);
    }

    void positionsStayWithinBounds_data()
    {
        QTest::addColumn<qreal>("asked");
        QTest::addColumn<qreal>("given");
        QTest::newRow("above the top") << -50.0 << 0.0;
        QTest::newRow("below the end") << 5000.0 << 700.0;
        QTest::newRow("between pixels") << 123.4 << 123.0;
        QTest::newRow("inside") << 123.0 << 123.0;
    }

    void positionsStayWithinBounds()
    {
        QFETCH(const qreal, asked);
        QFETCH(const qreal, given);
        m_outer->setContentY(asked);
        QCOMPARE(m_outer->contentY(), given);
        QCOMPARE(m_outer->content()->y(), -given);
    }

    void shrinkingContentPullsTheViewBack()
    {
        m_outer->setContentY(700);
        m_outer->content()->setHeight(400);
        QCOMPARE(m_outer->maximumY(), 100.0);
        QCOMPARE(m_outer->contentY(), 100.0);
    }

    void aTallerAreaPullsTheViewBack()
    {
        m_outer->setContentY(700);
        m_outer->setHeight(800);
        QCOMPARE(m_outer->contentY(), 200.0);
    }

    void shortContentNeverScrolls()
    {
        m_outer->content()->setHeight(200);
        QCOMPARE(m_outer->maximumY(), 0.0);
        m_outer->setContentY(30);
        QCOMPARE(m_outer->contentY(), 0.0);
    }

    void changesAreSignalledOnce()
    {
        const QSignalSpy spy(m_outer, &ScrollArea::contentYChanged);
        m_outer->setContentY(50);
        m_outer->setContentY(50);
        m_outer->setContentY(50.2);
        QCOMPARE(spy.count(), 1);
    }
};

static const TestClass<TestScrollArea> registered("tst_scrollarea");

#include "tst_scrollarea.moc"
