#include "scrolltesting.h"
#include "support/testprogram.h"
#include "typing.h"

#include <QtGui/qfontmetrics.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qstylehints.h>
#include <QtTest/qsignalspy.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr QPointF overInner(200, 60);
constexpr QPointF overOuter(200, 250);

// How long after the last wheel event the next one comes, in milliseconds: the same turn, and just another
// one.
constexpr quint64 atOnce = 249;
constexpr quint64 later = 250;

bool sendWheel(QQuickWindow &window, QPointF at, QPoint pixels, QPoint angle, Qt::ScrollPhase phase,
               quint64 pause)
{
    static quint64 time = 0;
    time += pause;
    QWheelEvent event(at, window.mapToGlobal(at), pixels, angle, Qt::NoButton, Qt::NoModifier, phase, false);
    event.setTimestamp(time);
    QCoreApplication::sendEvent(&window, &event);
    return event.isAccepted();
}

// Turns the wheel by so many notches towards the user.
bool turnWheel(QQuickWindow &window, QPointF at, QPoint notches, quint64 pause = later)
{
    return sendWheel(window, at, {}, notches * -120, Qt::NoScrollPhase, pause);
}

// Moves two fingers up by so many pixels.
bool moveFingers(QQuickWindow &window, QPointF at, int pixels, Qt::ScrollPhase phase = Qt::NoScrollPhase)
{
    return sendWheel(window, at, {0, -pixels}, {0, -pixels}, phase, atOnce);
}

qreal lineStep()
{
    return QFontMetricsF(QGuiApplication::font()).lineSpacing();
}

qreal notch()
{
    return std::round(lineStep() * QGuiApplication::styleHints()->wheelScrollLines());
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

    void whatIsOutsideOfItIsNotSeen() { QVERIFY(m_outer->clip() && m_inner->clip()); }

    void withoutContentNothingScrolls()
    {
        ScrollArea empty;
        empty.setSize({400, 300});
        QCOMPARE(empty.maximumX(), 0.0);
        QCOMPARE(empty.maximumY(), 0.0);
    }

    void theWheelScrollsByLines()
    {
        QVERIFY(turnWheel(*m_window, overOuter, {0, 1}));
        QCOMPARE(m_outer->contentY(), notch());
        QCOMPARE(m_outer->content()->y(), -notch());
        QVERIFY(turnWheel(*m_window, overOuter, {0, -1}));
        QCOMPARE(m_outer->contentY(), 0.0);
    }

    void aTouchpadScrollsByPixels()
    {
        QVERIFY(moveFingers(*m_window, overOuter, 7));
        QCOMPARE(m_outer->contentY(), 7.0);
    }

    void aNotchFollowsTheTypeSize()
    {
        const qreal before = notch();
        const SystemTypeSize larger(60);
        QVERIFY(turnWheel(*m_window, overOuter, {0, 1}));
        QCOMPARE(m_outer->contentY(), notch());
        QVERIFY(m_outer->contentY() > 2 * before);
    }

    void aNotchFollowsTheSystemsLines()
    {
        const qreal before = notch();
        const auto restore = qScopeGuard([lines = QGuiApplication::styleHints()->wheelScrollLines()] {
            QGuiApplication::styleHints()->setWheelScrollLines(lines);
        });
        QGuiApplication::styleHints()->setWheelScrollLines(
            2 * QGuiApplication::styleHints()->wheelScrollLines());
        QVERIFY(turnWheel(*m_window, overOuter, {0, 1}));
        QCOMPARE(m_outer->contentY(), std::round(2 * before));
    }

    void smallTurnsAddUp()
    {
        for (int part = 0; part < 120; ++part) {
            sendWheel(*m_window, overOuter, {}, {0, -1}, Qt::NoScrollPhase, atOnce);
        }
        QCOMPARE(m_outer->contentY(), notch());
    }

    void aGestureThatBeganInThePanelStaysInIt_data()
    {
        QTest::addColumn<bool>("hasPhases");
        QTest::newRow("a wheel") << false;
        QTest::newRow("a touchpad that says when it ends") << true;
    }

    void aGestureThatBeganInThePanelStaysInIt()
    {
        QFETCH(const bool, hasPhases);
        const Qt::ScrollPhase phase = hasPhases ? Qt::ScrollUpdate : Qt::NoScrollPhase;
        QVERIFY(
            sendWheel(*m_window, overInner, {0, -10}, {0, -10}, hasPhases ? Qt::ScrollBegin : phase, later));
        for (int move = 0; move < 50; ++move) {
            QVERIFY(moveFingers(*m_window, overInner, 10, phase));
        }
        QCOMPARE(m_inner->contentY(), m_inner->maximumY());
        QCOMPARE(m_outer->contentY(), 0.0);
        if (hasPhases) {
            QVERIFY(moveFingers(*m_window, overOuter, -30, Qt::ScrollMomentum));
            QCOMPARE(m_inner->contentY(), m_inner->maximumY() - 30);
            QVERIFY(moveFingers(*m_window, overOuter, 30, Qt::ScrollEnd));
        }
        QCOMPARE(m_outer->contentY(), 0.0);
        // The next one finds the panel at its end.
        QVERIFY(
            sendWheel(*m_window, overInner, {0, -10}, {0, -10}, hasPhases ? Qt::ScrollBegin : phase, later));
        QCOMPARE(m_outer->contentY(), 10.0);
    }

    void aGestureThatBeganBesideAPanelPassesOverIt()
    {
        m_inner->setY(320);
        for (int move = 0; move < 30; ++move) {
            QVERIFY(moveFingers(*m_window, overOuter, 10));
        }
        QCOMPARE(m_outer->contentY(), 300.0);
        QCOMPARE(m_inner->contentY(), 0.0);
    }

    void aWheelAfterATouchpadBeginsAnew()
    {
        QVERIFY(sendWheel(*m_window, overInner, {0, -10}, {0, -10}, Qt::ScrollBegin, later));
        QVERIFY(moveFingers(*m_window, overInner, 1000, Qt::ScrollUpdate));
        QVERIFY(moveFingers(*m_window, overInner, 10, Qt::ScrollEnd));
        QCOMPARE(m_inner->contentY(), m_inner->maximumY());
        QVERIFY(turnWheel(*m_window, overInner, {0, 1}, atOnce));
        QCOMPARE(m_outer->contentY(), notch());
    }

    void aWheelMovedElsewhereBeginsAnew()
    {
        QVERIFY(turnWheel(*m_window, overInner, {0, 1}));
        const qreal inner = m_inner->contentY();
        QVERIFY(turnWheel(*m_window, overOuter, {0, 1}, atOnce));
        QCOMPARE(m_inner->contentY(), inner);
        QCOMPARE(m_outer->contentY(), notch());
    }

    void widerContentScrollsSideways()
    {
        m_outer->content()->setImplicitWidth(600);
        QCOMPARE(m_outer->content()->width(), 600.0);
        QCOMPARE(m_outer->maximumX(), 200.0);
        QVERIFY(sendWheel(*m_window, overOuter, {-50, 0}, {-50, 0}, Qt::NoScrollPhase, later));
        QCOMPARE(m_outer->contentX(), 50.0);
        QCOMPARE(m_outer->content()->x(), -50.0);
        QCOMPARE(m_outer->contentY(), 0.0);
        m_outer->setWidth(700);
        QCOMPARE(m_outer->contentX(), 0.0);
        QCOMPARE(m_outer->content()->width(), 700.0);
    }

    void heightsThatAreNotWholeAreScrolledThrough()
    {
        m_outer->content()->setHeight(1000.3);
        QCOMPARE(m_outer->maximumY(), 701.0);
        m_outer->setHeight(300.6);
        QCOMPARE(m_outer->maximumY(), 700.0);
        m_outer->setContentY(1e6);
        QCOMPARE(m_outer->contentY(), 700.0);
        QVERIFY(m_outer->content()->y() + m_outer->content()->height() <= m_outer->height());
    }

    void aFoldLeavesOutWhatIsTooTall()
    {
        constexpr qreal folded = 1e9 + 1;
        m_outer->setFold(500, folded);
        QCOMPARE(m_outer->maximumY(), 700 + folded);
        m_outer->setContentY(500);
        QCOMPARE(m_outer->folded(), 0.0);
        QCOMPARE(m_outer->content()->y(), -500.0);
        m_outer->setContentY(500 + 123'456'789);
        QCOMPARE(m_outer->folded(), 123'456'789.0);
        QCOMPARE(m_outer->content()->y(), -500.0);
        m_outer->setContentY(510 + folded);
        QCOMPARE(m_outer->folded(), folded);
        QCOMPARE(m_outer->content()->y(), -510.0);
        m_outer->setFold(0, 0);
        QCOMPARE(m_outer->contentY(), 700.0);
    }

    void theInnerAreaScrollsFirstAndTheOuterAfterIt()
    {
        while (m_inner->contentY() < m_inner->maximumY()) {
            const qreal before = m_inner->contentY();
            QVERIFY(turnWheel(*m_window, overInner, {0, 1}));
            QVERIFY(m_inner->contentY() > before);
            QCOMPARE(m_outer->contentY(), 0.0);
        }
        QVERIFY(turnWheel(*m_window, overInner, {0, 1}));
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
        QVERIFY(!turnWheel(*m_window, overOuter, {0, -1}));
        m_outer->setContentY(m_outer->maximumY());
        QVERIFY(!turnWheel(*m_window, overOuter, {0, 1}));
    }

    void theWheelBesideTheInnerAreaScrollsTheOuterOne()
    {
        QVERIFY(turnWheel(*m_window, overOuter, {0, 6}));
        QCOMPARE(m_inner->contentY(), 0.0);
        QCOMPARE(m_outer->contentY(),
                 std::round(6 * lineStep() * QGuiApplication::styleHints()->wheelScrollLines()));
    }

    void keysScroll_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QPointF>("expected");
        const qreal line = lineStep();
        QTest::newRow("Down by a line") << Qt::Key_Down << QPointF(100, std::round(300 + line));
        QTest::newRow("Up by a line") << Qt::Key_Up << QPointF(100, std::round(300 - line));
        QTest::newRow("Right by a line") << Qt::Key_Right << QPointF(std::round(100 + line), 300);
        QTest::newRow("Left by a line") << Qt::Key_Left << QPointF(std::round(100 - line), 300);
        QTest::newRow("Page Down by all but a line")
            << Qt::Key_PageDown << QPointF(100, std::round(600 - line));
        QTest::newRow("Page Up by all but a line") << Qt::Key_PageUp << QPointF(100, std::round(line));
        QTest::newRow("End") << Qt::Key_End << QPointF(100, 700);
        QTest::newRow("Home") << Qt::Key_Home << QPointF(100, 0);
        QTest::newRow("another key") << Qt::Key_A << QPointF(100, 300);
    }

    void keysScroll()
    {
        QFETCH(const Qt::Key, key);
        QFETCH(const QPointF, expected);
        m_outer->content()->setImplicitWidth(600);
        QVERIFY(sendWheel(*m_window, overOuter, {-100, 0}, {-100, 0}, Qt::NoScrollPhase, later));
        m_outer->setContentY(300);
        m_outer->forceActiveFocus();
        QTest::keyClick(m_window.get(), key);
        QCOMPARE(QPointF(m_outer->contentX(), m_outer->contentY()), expected);
    }

    void aKeyThatScrollsNothingIsLeftToOthers()
    {
        m_outer->forceActiveFocus();
        QVERIFY(!acceptsKey(m_window.get(), Qt::Key_Home));
        QVERIFY(!acceptsKey(m_window.get(), Qt::Key_A, u"a"_s));
    }

    void anInnerAreaAtItsEndLeavesTheKeyToTheOuterOne()
    {
        m_inner->forceActiveFocus();
        QTest::keyClick(m_window.get(), Qt::Key_End);
        QCOMPARE(m_inner->contentY(), m_inner->maximumY());
        QCOMPARE(m_outer->contentY(), 0.0);
        QTest::keyClick(m_window.get(), Qt::Key_Down);
        QCOMPARE(m_outer->contentY(), std::round(lineStep()));
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
        m_outer->content()->setImplicitWidth(600);
        const QSignalSpy sideways(m_outer, &ScrollArea::contentXChanged);
        sendWheel(*m_window, overOuter, {-50, 0}, {-50, 0}, Qt::NoScrollPhase, later);
        QCOMPARE(sideways.count(), 1);
        m_outer->setContentY(20);
        QCOMPARE(sideways.count(), 1);
        const QSignalSpy contents(m_outer, &ScrollArea::contentChanged);
        m_outer->setContent(m_outer->content());
        QCOMPARE(contents.count(), 0);
        m_outer->setContent(nullptr);
        QCOMPARE(contents.count(), 1);
    }

    void itSaysWhenItLeavesTheWindow()
    {
        const QSignalSpy spy(m_outer, &QQuickItem::windowChanged);
        m_outer->setParentItem(nullptr);
        QCOMPARE(spy.count(), 1);
    }
};

static const TestClass<TestScrollArea> testScrollArea("tst_scrollarea");

#include "tst_scrollarea.moc"
