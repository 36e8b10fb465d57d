#include "scrolltesting.h"
#include "support/testprogram.h"

namespace {

// An item with a text cursor, as far as a scroll area is concerned.
class CursorItem : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(QRectF cursorRectangle READ cursorRectangle NOTIFY cursorRectangleChanged)

public:
    using QQuickItem::QQuickItem;

    [[nodiscard]] QRectF cursorRectangle() const { return m_cursor; }
    void setCursorRectangle(const QRectF &cursor)
    {
        m_cursor = cursor;
        emit cursorRectangleChanged();
    }

signals:
    void cursorRectangleChanged();

protected:
    void mousePressEvent(QMouseEvent *) override { forceActiveFocus(Qt::MouseFocusReason); }

private:
    QRectF m_cursor;
};

} // namespace

// How the view follows the keyboard focus.
class TestScrollFocus : public QObject
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

    void aFocusedItemIsRevealed_data()
    {
        QTest::addColumn<qreal>("from");
        QTest::addColumn<qreal>("itemY");
        QTest::addColumn<qreal>("to");
        // With a margin of 24 pixels.
        QTest::newRow("below the view") << 0.0 << 600.0 << 600.0 + 30 + 24 - 300;
        QTest::newRow("just below the view") << 0.0 << 290.0 << 290.0 + 30 + 24 - 300;
        QTest::newRow("above the view") << 700.0 << 200.0 << 200.0 - 24;
        QTest::newRow("less than the margin above its end") << 0.0 << 260.0 << 14.0;
        QTest::newRow("less than the margin below its top") << 190.0 << 200.0 << 176.0;
    }

    void aFocusedItemIsRevealed()
    {
        QFETCH(const qreal, from);
        QFETCH(const qreal, itemY);
        m_outer->setContentY(from);
        QQuickItem *item = addItem(m_outer->content(), {10, itemY, 100, 30});
        item->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        QTEST(m_outer->contentY(), "to");
    }

    void aVisibleFocusedItemStaysWhereItIs()
    {
        m_outer->setContentY(100);
        addItem(m_outer->content(), {10, 200, 100, 30})->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentY(), 100.0);
        // Having been revealed once, it does not hold the view fast.
        m_outer->setContentY(600);
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentY(), 600.0);
    }

    void comingBackToTheWindowMovesNothing()
    {
        addItem(m_outer->content(), {10, 600, 100, 30})->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        QVERIFY(m_outer->contentY() > 0);
        m_outer->setContentY(0);
        TestWindow other;
        QVERIFY(other.isReady());
        QTRY_VERIFY(!m_window->isActive());
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentY(), 0.0);

        addItem(m_outer->content(), {10, 700, 100, 30})->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        QVERIFY(m_outer->contentY() > 0);
    }

    void anItemBesideTheViewIsRevealed()
    {
        m_outer->content()->setImplicitWidth(1000);
        QQuickItem *item = addItem(m_outer->content(), {900, 600, 90, 30});
        item->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        QVERIFY(m_outer->contentX() <= 900);
        QVERIFY(m_outer->contentX() + 400 >= 990);
        QVERIFY(m_outer->contentY() + 300 >= 630);
        addItem(m_outer->content(), {10, 600, 90, 30})->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentX(), 0.0);
    }

    void anItemALittleSmallerThanTheViewIsRevealedWhole_data()
    {
        QTest::addColumn<qreal>("height");
        QTest::addColumn<qreal>("fromAbove");
        QTest::addColumn<qreal>("fromBelow");
        QTest::newRow("with room for margins") << 240.0 << 350.0 + 240 + 24 - 300 << 350.0 - 24;
        QTest::newRow("with hardly any") << 294.0 << 347.0 << 347.0;
        QTest::newRow("with none") << 300.0 << 350.0 << 350.0;
    }

    void anItemALittleSmallerThanTheViewIsRevealedWhole()
    {
        QFETCH(const qreal, height);
        for (const qreal from : {0.0, 700.0}) {
            m_outer->setContentY(from);
            m_outer->forceActiveFocus();
            QQuickItem *item = addItem(m_outer->content(), {10, 350, 100, height});
            item->forceActiveFocus(Qt::TabFocusReason);
            (void)settled(*m_window);
            QTEST(m_outer->contentY(), from == 0 ? "fromAbove" : "fromBelow");
        }
    }

    void anItemThatFillsTheViewStaysWhereItIs()
    {
        for (const qreal y : {100.0, 200.0, 300.0}) {
            m_outer->forceActiveFocus();
            m_outer->setContentY(y);
            addItem(m_outer->content(), {10, 100, 100, 500})->forceActiveFocus(Qt::TabFocusReason);
            (void)settled(*m_window);
            QCOMPARE(m_outer->contentY(), y);
        }
    }

    void anItemInAnInnerAreaIsRevealedWithAllOfThatArea()
    {
        m_inner->setY(500);
        addItem(m_inner->content(), {0, 0, 100, 30})->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentY(), 500.0 + 120 + 24 - 300);
    }

    void anItemThatLendsItsFocusToTheWindowStaysWhereItIs()
    {
        QQuickItem *item = addItem(m_outer->content(), {10, 600, 100, 30});
        item->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        m_outer->setContentY(0);
        item->setFocus(false);
        QCOMPARE(m_window->activeFocusItem(), m_window->contentItem());
        item->setFocus(true);
        QVERIFY(item->hasActiveFocus());
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentY(), 0.0);
    }

    void theCursorOfAnItemWithoutTheFocusIsNotFollowed()
    {
        auto *before = new CursorItem(m_outer->content());
        before->forceActiveFocus(Qt::TabFocusReason);
        addItem(m_outer->content(), {10, 100, 100, 30})->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        m_outer->setContentY(600);
        before->setCursorRectangle({0, 10, 1, 16});
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentY(), 600.0);
    }

    void anItemTallerThanTheViewIsRevealedFromItsTop()
    {
        addItem(m_outer->content(), {10, 350, 100, 500})->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentY(), 350.0);
    }

    void aMovedTextCursorIsFollowed()
    {
        auto *item = new CursorItem(m_outer->content());
        item->setY(150);
        item->setSize({400, 800});
        item->setCursorRectangle({0, 0, 1, 16});
        item->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentY(), 0.0);
        item->setCursorRectangle({0, 500, 1, 16});
        (void)settled(*m_window);
        QVERIFY(m_outer->contentY() + 300 >= 150 + 516);
        QVERIFY(m_outer->contentY() <= 150 + 500);
    }

    void aFingerThatDragsIsFollowedInstead()
    {
        auto *item = new CursorItem(m_outer->content());
        item->setSize({400, 100});
        item->setCursorRectangle({0, 0, 1, 16});
        item->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        m_outer->beginDrag();
        m_outer->dragTo(0, -300);
        const qreal dragged = m_outer->contentY();
        QVERIFY(dragged > 100);
        item->setCursorRectangle({0, 16, 1, 16});
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentY(), dragged);
        m_outer->endDrag(0, 0);
    }

    void aFocusedItemWithACursorIsRevealedWholeIfItFits()
    {
        auto *item = new CursorItem(m_outer->content());
        item->setY(400);
        // As high as the view without its margins.
        item->setSize({400, 252});
        item->setCursorRectangle({0, 0, 1, 16});
        item->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        QVERIFY(m_outer->contentY() + 300 >= 652);
        QVERIFY(m_outer->contentY() <= 400);
    }

    void onlyTheCursorOfATallItemIsRevealed_data()
    {
        QTest::addColumn<qreal>("height");
        QTest::newRow("taller than the view") << 800.0;
        QTest::newRow("too tall for the margins") << 253.0;
    }

    void onlyTheCursorOfATallItemIsRevealed()
    {
        QFETCH(const qreal, height);
        auto *item = new CursorItem(m_outer->content());
        item->setY(150);
        item->setSize({400, height});
        item->setCursorRectangle({0, 200, 1, 16});
        m_outer->setContentY(260);
        item->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentY(), 260.0);
    }

    void aPressOnAHalfHiddenItemMovesNothing()
    {
        auto *item = new CursorItem(m_outer->content());
        item->setAcceptedMouseButtons(Qt::LeftButton);
        item->setPosition({10, 280});
        item->setSize({100, 60});
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, {20, 290});
        QVERIFY(item->hasActiveFocus());
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentY(), 0.0);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, {20, 290});
        (void)settled(*m_window);
        QCOMPARE(m_outer->contentY(), 0.0);
    }

    void anAreaWithTheFocusInItMayBeDestroyed()
    {
        QQuickItem *item = addItem(m_inner->content(), {0, 0, 100, 30});
        item->forceActiveFocus(Qt::TabFocusReason);
        QCOMPARE(m_window->activeFocusItem(), item);
        delete m_inner;
        QVERIFY(m_window->activeFocusItem() != item);
        addItem(m_outer->content(), {10, 600, 100, 30})->forceActiveFocus(Qt::TabFocusReason);
        (void)settled(*m_window);
        QVERIFY(m_outer->contentY() > 0);
    }
};

static const TestClass<TestScrollFocus> testScrollFocus("tst_scrollfocus");

#include "tst_scrollfocus.moc"
