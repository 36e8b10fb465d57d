#include "finger.h"
#include "support/testprogram.h"
#include "ui/controls/pressarea.h"
#include "windowtesting.h"

#include <QtTest/qsignalspy.h>

namespace {

constexpr QPoint inside(50, 40);
constexpr QPoint outside(300, 250);

bool sendKey(QQuickWindow &window, QEvent::Type type, Qt::Key key, Qt::KeyboardModifiers modifiers,
             bool repeated)
{
    QKeyEvent event(type, key, modifiers, {}, repeated);
    QCoreApplication::sendEvent(&window, &event);
    return event.isAccepted();
}

bool pressKey(QQuickWindow &window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}, bool repeated = false)
{
    return sendKey(window, QEvent::KeyPress, key, modifiers, repeated);
}

bool releaseKey(QQuickWindow &window, Qt::Key key, bool repeated = false)
{
    return sendKey(window, QEvent::KeyRelease, key, {}, repeated);
}

} // namespace

class TestPressArea : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestWindow> m_window;
    PressArea *m_area = nullptr;
    std::unique_ptr<QSignalSpy> m_triggered;

private slots:
    void init()
    {
        m_window = std::make_unique<TestWindow>();
        m_area = new PressArea(m_window->contentItem());
        m_area->setPosition({20, 20});
        m_area->setSize({100, 50});
        m_triggered = std::make_unique<QSignalSpy>(m_area, &PressArea::triggered);
        QVERIFY(m_window->isReady());
    }

    void cleanup()
    {
        m_triggered.reset();
        m_window.reset();
    }

    void aClickTriggersOnRelease()
    {
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, inside);
        QCOMPARE(m_triggered->count(), 0);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, inside);
        QCOMPARE(m_triggered->count(), 1);
    }

    void theMouseGivesTheFocusWhenItPresses()
    {
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, inside);
        QVERIFY(m_area->hasActiveFocus());
    }

    void aFingerGivesTheFocusWhenItTaps()
    {
        Finger finger;
        finger.setWindow(m_window.get());
        finger.press(inside);
        QVERIFY(m_area->isDown());
        QVERIFY(!m_area->hasActiveFocus());
        finger.release(inside);
        QVERIFY(m_area->hasActiveFocus());
        QCOMPARE(m_triggered->count(), 1);
    }

    void whoeverTakesTheMouseLetsGo()
    {
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, inside);
        m_area->ungrabMouse();
        QVERIFY(!m_area->isDown());
    }

    void aReleaseOutsideTriggersNothing()
    {
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, inside);
        QTest::mouseMove(m_window.get(), outside);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, outside);
        QCOMPARE(m_triggered->count(), 0);
    }

    void aReleaseBackInsideTriggers()
    {
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, inside);
        QTest::mouseMove(m_window.get(), outside);
        QTest::mouseMove(m_window.get(), inside);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, inside);
        QCOMPARE(m_triggered->count(), 1);
    }

    void otherButtonsTriggerNothing()
    {
        QTest::mouseClick(m_window.get(), Qt::RightButton, {}, inside);
        QTest::mouseClick(m_window.get(), Qt::MiddleButton, {}, inside);
        QCOMPARE(m_triggered->count(), 0);
    }

    void aDoubleClickTriggersTwice()
    {
        QTest::mouseDClick(m_window.get(), Qt::LeftButton, {}, inside);
        QCOMPARE(m_triggered->count(), 2);
    }

    void aHeldMouseButtonShowsWhatReleasingItDoes()
    {
        const QSignalSpy changes(m_area, &PressArea::downChanged);
        QVERIFY(!m_area->isDown());
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, inside);
        QVERIFY(m_area->isDown());
        QTest::mouseMove(m_window.get(), outside);
        QVERIFY(!m_area->isDown());
        QTest::mouseMove(m_window.get(), inside);
        QVERIFY(m_area->isDown());
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, inside);
        QVERIFY(!m_area->isDown());
        QCOMPARE(changes.count(), 4);
    }

    void spaceTriggersOnRelease()
    {
        m_area->forceActiveFocus();
        QVERIFY(pressKey(*m_window, Qt::Key_Space));
        QVERIFY(m_area->isDown());
        QCOMPARE(m_triggered->count(), 0);
        QVERIFY(releaseKey(*m_window, Qt::Key_Space));
        QVERIFY(!m_area->isDown());
        QCOMPARE(m_triggered->count(), 1);
    }

    void spaceThatWasPressedElsewhereTriggersNothing()
    {
        m_area->forceActiveFocus();
        QVERIFY(!releaseKey(*m_window, Qt::Key_Space));
        QCOMPARE(m_triggered->count(), 0);
    }

    void escapeLetsGo_data()
    {
        QTest::addColumn<bool>("byMouse");
        QTest::newRow("of a mouse button") << true;
        QTest::newRow("of Space") << false;
    }

    void escapeLetsGo()
    {
        QFETCH(const bool, byMouse);
        m_area->forceActiveFocus();
        if (byMouse) {
            QTest::mousePress(m_window.get(), Qt::LeftButton, {}, inside);
        } else {
            pressKey(*m_window, Qt::Key_Space);
        }
        QVERIFY(pressKey(*m_window, Qt::Key_Escape));
        QVERIFY(!m_area->isDown());
        if (byMouse) {
            QTest::mouseMove(m_window.get(), inside + QPoint(1, 1));
            QVERIFY(!m_area->isDown());
            QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, inside);
        } else {
            releaseKey(*m_window, Qt::Key_Space);
        }
        QCOMPARE(m_triggered->count(), 0);
        QVERIFY(!pressKey(*m_window, Qt::Key_Escape));
    }

    void leavingLetsGo()
    {
        const PressArea other(m_window->contentItem());
        m_area->forceActiveFocus();
        pressKey(*m_window, Qt::Key_Space);
        QTest::keyClick(m_window.get(), Qt::Key_Tab);
        QVERIFY(other.hasActiveFocus());
        QVERIFY(!m_area->isDown());
        releaseKey(*m_window, Qt::Key_Space);
        m_area->forceActiveFocus();
        releaseKey(*m_window, Qt::Key_Space);
        QCOMPARE(m_triggered->count(), 0);
    }

    void keysTrigger_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<bool>("triggers");
        const Qt::KeyboardModifiers none = Qt::NoModifier;
        QTest::newRow("Return") << Qt::Key_Return << none << true;
        QTest::newRow("keypad Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier) << true;
        QTest::newRow("Enter") << Qt::Key_Enter << none << true;
        QTest::newRow("Ctrl and Return")
            << Qt::Key_Return << Qt::KeyboardModifiers(Qt::ControlModifier) << false;
        QTest::newRow("Shift and Space")
            << Qt::Key_Space << Qt::KeyboardModifiers(Qt::ShiftModifier) << false;
        QTest::newRow("Alt and Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::AltModifier) << false;
        QTest::newRow("a letter") << Qt::Key_A << none << false;
        QTest::newRow("Escape") << Qt::Key_Escape << none << false;
    }

    void keysTrigger()
    {
        QFETCH(const Qt::Key, key);
        QFETCH(const Qt::KeyboardModifiers, modifiers);
        QFETCH(const bool, triggers);
        m_area->forceActiveFocus();
        QCOMPARE(pressKey(*m_window, key, modifiers), triggers);
        QCOMPARE(m_triggered->count(), triggers ? 1 : 0);
    }

    void aKeyHeldDownTriggersOnce()
    {
        m_area->forceActiveFocus();
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
            m_triggered->clear();
            QVERIFY(pressKey(*m_window, key));
            for (int i = 0; i < 3; ++i) {
                releaseKey(*m_window, key, true);
                QVERIFY(pressKey(*m_window, key, {}, true));
            }
            releaseKey(*m_window, key);
            QCOMPARE(m_triggered->count(), 1);
        }
    }

    void theTabKeyReachesIt()
    {
        QTest::keyClick(m_window.get(), Qt::Key_Tab);
        QVERIFY(m_area->hasActiveFocus());
    }

    void triggerIsACallToo()
    {
        m_area->trigger();
        QCOMPARE(m_triggered->count(), 1);
    }

    void theOutcomeIsOnTheScreenBeforeAnythingElse()
    {
        qreal shownOpacity = -1;
        connect(m_window.get(), &QQuickWindow::frameSwapped, m_area,
                [&] { shownOpacity = m_area->opacity(); });
        connect(m_area, &PressArea::triggered, m_area, [&] { m_area->setOpacity(0.25); });
        m_area->trigger();
        QCOMPARE(shownOpacity, 0.25);
    }

    void withoutAWindowItStillTriggers()
    {
        PressArea alone;
        const QSignalSpy triggered(&alone, &PressArea::triggered);
        alone.trigger();
        QCOMPARE(triggered.count(), 1);
    }

    void itMayBeDestroyedByWhatItTriggers()
    {
        const QPointer<PressArea> area = m_area;
        connect(m_area, &PressArea::triggered, m_area, &QObject::deleteLater);
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, inside);
        QTRY_VERIFY(!area);
        QCOMPARE(m_triggered->count(), 1);
    }
};

static const TestClass<TestPressArea> testPressArea("tst_pressarea");

#include "tst_pressarea.moc"
