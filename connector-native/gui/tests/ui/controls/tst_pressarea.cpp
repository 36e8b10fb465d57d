#include "support/testprogram.h"
#include "ui/controls/pressarea.h"
#include "windowtesting.h"

#include <QtTest/qsignalspy.h>

namespace {

constexpr QPoint Inside(50, 40);
constexpr QPoint Outside(300, 250);

bool sendKey(QQuickWindow &window, Qt::Key key, Qt::KeyboardModifiers modifiers, bool repeated)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers, {}, repeated);
    QCoreApplication::sendEvent(&window, &event);
    return event.isAccepted();
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
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, Inside);
        QCOMPARE(m_triggered->count(), 0);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, Inside);
        QCOMPARE(m_triggered->count(), 1);
    }

    void aClickTakesTheFocus()
    {
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, Inside);
        QVERIFY(m_area->hasActiveFocus());
    }

    void aReleaseOutsideTriggersNothing()
    {
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, Inside);
        QTest::mouseMove(m_window.get(), Outside);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, Outside);
        QCOMPARE(m_triggered->count(), 0);
    }

    void aReleaseBackInsideTriggers()
    {
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, Inside);
        QTest::mouseMove(m_window.get(), Outside);
        QTest::mouseMove(m_window.get(), Inside);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, Inside);
        QCOMPARE(m_triggered->count(), 1);
    }

    void otherButtonsTriggerNothing()
    {
        QTest::mouseClick(m_window.get(), Qt::RightButton, {}, Inside);
        QTest::mouseClick(m_window.get(), Qt::MiddleButton, {}, Inside);
        QCOMPARE(m_triggered->count(), 0);
    }

    void aDoubleClickTriggersTwice()
    {
        QTest::mouseDClick(m_window.get(), Qt::LeftButton, {}, Inside);
        QCOMPARE(m_triggered->count(), 2);
    }

    void keysTrigger_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<bool>("triggers");
        const Qt::KeyboardModifiers none = Qt::NoModifier;
        QTest::newRow("Space") << Qt::Key_Space << none << true;
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
        QCOMPARE(sendKey(*m_window, key, modifiers, false), triggers);
        QCOMPARE(m_triggered->count(), triggers ? 1 : 0);
    }

    void aKeyHeldDownTriggersOnce()
    {
        m_area->forceActiveFocus();
        QVERIFY(sendKey(*m_window, Qt::Key_Space, Qt::NoModifier, false));
        QVERIFY(sendKey(*m_window, Qt::Key_Space, Qt::NoModifier, true));
        QVERIFY(sendKey(*m_window, Qt::Key_Space, Qt::NoModifier, true));
        QCOMPARE(m_triggered->count(), 1);
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

    void thePressedLookIsOnTheScreenBeforeTheOperation()
    {
        qreal shownOpacity = -1;
        bool shownBefore = false;
        connect(m_window.get(), &QQuickWindow::frameSwapped, m_area,
                [&] { shownOpacity = m_area->opacity(); });
        connect(m_area, &PressArea::aboutToTrigger, m_area, [&] {
            shownOpacity = -1;
            m_area->setOpacity(0.5);
        });
        connect(m_area, &PressArea::triggered, m_area,
                [&] { shownBefore = qFuzzyCompare(shownOpacity, 0.5); });
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, Inside);
        QCOMPARE(m_triggered->count(), 1);
        QVERIFY(shownBefore);
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
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, Inside);
        QTRY_VERIFY(!area);
        QCOMPARE(m_triggered->count(), 1);
    }
};

static const TestClass<TestPressArea> registered("tst_pressarea");

#include "tst_pressarea.moc"
