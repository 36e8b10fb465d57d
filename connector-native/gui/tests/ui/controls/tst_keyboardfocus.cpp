#include "support/testprogram.h"
#include "ui/controls/keyboardfocus.h"
#include "windowtesting.h"

#include <QtTest/qsignalspy.h>

class TestKeyboardFocus : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestWindow> m_window;
    QQuickItem *m_item = nullptr;
    QQuickItem *m_other = nullptr;

private slots:
    void init()
    {
        m_window = std::make_unique<TestWindow>();
        m_item = addItem(m_window->contentItem(), {0, 0, 100, 50});
        m_other = addItem(m_window->contentItem(), {0, 100, 100, 50});
        m_item->setAcceptedMouseButtons(Qt::LeftButton);
        QVERIFY(m_window->isReady());
    }

    void cleanup() { m_window.reset(); }

    void onlyTheKeyboardMakesItActive_data()
    {
        QTest::addColumn<Qt::FocusReason>("reason");
        QTest::addColumn<bool>("active");
        QTest::newRow("Tab") << Qt::TabFocusReason << true;
        QTest::newRow("Shift and Tab") << Qt::BacktabFocusReason << true;
        QTest::newRow("a shortcut") << Qt::ShortcutFocusReason << true;
        QTest::newRow("the mouse") << Qt::MouseFocusReason << false;
        QTest::newRow("the program") << Qt::OtherFocusReason << false;
    }

    void onlyTheKeyboardMakesItActive()
    {
        QFETCH(const Qt::FocusReason, reason);
        QFETCH(const bool, active);
        KeyboardFocus focus;
        focus.setItem(m_item);
        QVERIFY(!focus.isActive());
        m_item->forceActiveFocus(reason);
        QCOMPARE(focus.isActive(), active);
    }

    void losingTheFocusEndsIt()
    {
        KeyboardFocus focus;
        focus.setItem(m_item);
        const QSignalSpy changes(&focus, &KeyboardFocus::activeChanged);
        m_item->forceActiveFocus(Qt::TabFocusReason);
        m_other->forceActiveFocus(Qt::TabFocusReason);
        QVERIFY(!focus.isActive());
        QCOMPARE(changes.count(), 2);
        m_item->forceActiveFocus(Qt::OtherFocusReason);
        QVERIFY(!focus.isActive());
    }

    void aClickOnTheFocusedItemEndsIt()
    {
        KeyboardFocus focus;
        focus.setItem(m_item);
        m_item->forceActiveFocus(Qt::TabFocusReason);
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, {20, 20});
        QVERIFY(!focus.isActive());
    }

    // As when its menu closes.
    void itComesBackFromAPopupUnlessByAClick_data()
    {
        QTest::addColumn<bool>("pressed");
        QTest::addColumn<Qt::FocusReason>("reason");
        QTest::addColumn<bool>("active");
        QTest::newRow("at once") << false << Qt::PopupFocusReason << true;
        QTest::newRow("by a click") << false << Qt::MouseFocusReason << false;
        QTest::newRow("after a click") << true << Qt::PopupFocusReason << false;
    }

    void itComesBackFromAPopupUnlessByAClick()
    {
        QFETCH(const bool, pressed);
        QFETCH(const Qt::FocusReason, reason);
        QFETCH(const bool, active);
        KeyboardFocus focus;
        focus.setItem(m_item);
        m_item->forceActiveFocus(Qt::TabFocusReason);
        m_other->forceActiveFocus(Qt::PopupFocusReason);
        QVERIFY(!focus.isActive());
        if (pressed) {
            QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, {20, 20});
        }
        m_item->forceActiveFocus(reason);
        QCOMPARE(focus.isActive(), active);
    }

    void comingBackToTheWindowRestoresIt_data()
    {
        QTest::addColumn<Qt::FocusReason>("reason");
        QTest::addColumn<bool>("active");
        QTest::newRow("by the keyboard, as before") << Qt::TabFocusReason << true;
        QTest::newRow("by the mouse, as before") << Qt::MouseFocusReason << false;
    }

    void comingBackToTheWindowRestoresIt()
    {
        QFETCH(const Qt::FocusReason, reason);
        QFETCH(const bool, active);
        KeyboardFocus focus;
        focus.setItem(m_item);
        m_item->forceActiveFocus(reason);
        TestWindow second;
        QVERIFY(second.isReady());
        QTRY_VERIFY(!m_item->hasActiveFocus());
        QVERIFY(!focus.isActive());
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTRY_VERIFY(m_item->hasActiveFocus());
        QCOMPARE(focus.isActive(), active);
    }

    void anotherItemIsWatchedInstead()
    {
        KeyboardFocus focus;
        focus.setItem(m_item);
        focus.setItem(m_other);
        m_item->forceActiveFocus(Qt::TabFocusReason);
        QVERIFY(!focus.isActive());
        m_other->forceActiveFocus(Qt::TabFocusReason);
        QVERIFY(focus.isActive());
    }

    void anItemThatIsGoneDoesNoHarm()
    {
        KeyboardFocus focus;
        focus.setItem(m_other);
        delete m_other;
        QCOMPARE(focus.item(), nullptr);
        focus.setItem(m_item);
        m_item->forceActiveFocus(Qt::TabFocusReason);
        QVERIFY(focus.isActive());
    }
};

static const TestClass<TestKeyboardFocus> testKeyboardFocus("tst_keyboardfocus");

#include "tst_keyboardfocus.moc"
