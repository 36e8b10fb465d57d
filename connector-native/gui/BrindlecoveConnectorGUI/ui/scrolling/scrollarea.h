#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QVariantAnimation>

/// A viewport onto one larger item, scrolled by wheel, touchpad, touch and keyboard. At its end the next
/// gesture scrolls the area around it; a gesture stays with the area in which it began. An item that gets the
/// keyboard focus from another item, or moves its text cursor, is scrolled into view.
/// Content is as wide as the area, or as its own implicit width if that is more. Lengths are in logical
/// pixels. Main thread only.
class ScrollArea : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *content READ content WRITE setContent NOTIFY contentChanged)
    Q_PROPERTY(qreal contentX READ contentX NOTIFY contentXChanged)
    Q_PROPERTY(qreal contentY READ contentY WRITE setContentY NOTIFY contentYChanged)
    Q_PROPERTY(qreal maximumX READ maximumX NOTIFY extentChanged)
    Q_PROPERTY(qreal maximumY READ maximumY NOTIFY extentChanged)

public:
    explicit ScrollArea(QQuickItem *parent = nullptr);
    ~ScrollArea() override;

    /// The innermost area around an item; null if there is none.
    [[nodiscard]] static ScrollArea *around(const QQuickItem &item);

    [[nodiscard]] QQuickItem *content() const { return m_content; }
    void setContent(QQuickItem *content);

    /// How far the content is scrolled; always within 0 and the maximum, in whole pixels.
    [[nodiscard]] qreal contentX() const { return m_position.x(); }
    [[nodiscard]] qreal contentY() const { return m_position.y(); }
    void setContentY(qreal contentY);
    [[nodiscard]] qreal maximumX() const;
    [[nodiscard]] qreal maximumY() const;

    /// Scrolls by as much as the content has moved. Unlike a scroll, that ends no gesture.
    void moveBy(qreal distance);

    /// Content too tall for a renderer's single precision hides a part of its height: while the view is
    /// between `top` and `top + height`, the content does not move and shows itself what belongs there.
    void setFold(qreal top, qreal height);
    /// The hidden height above the view.
    [[nodiscard]] qreal folded() const;

    /// A finger has begun to move, has got so far from where it began, and has left the screen at a velocity
    /// in pixels per second.
    Q_INVOKABLE void beginDrag();
    Q_INVOKABLE void dragTo(qreal x, qreal y);
    Q_INVOKABLE void endDrag(qreal velocityX, qreal velocityY);

signals:
    void contentChanged();
    void contentXChanged();
    void contentYChanged();
    void extentChanged();

protected:
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void updatePolish() override;

private:
    /// A run of wheel events without a pause, or one movement of fingers.
    struct Gesture
    {
        QPointer<ScrollArea> area;
        quint64 lastTime = 0;
        QPointF dragged;
        bool isDrag = false;

        [[nodiscard]] bool goesOnWith(const QWheelEvent &event) const;
    };
    struct Fold
    {
        qreal top = 0;
        qreal height = 0;
        friend bool operator==(const Fold &, const Fold &) = default;
    };

    Q_SLOT void revealCursor() { polish(); }
    void followFocus();
    void followExtent();
    [[nodiscard]] QRectF focusedPart() const;
    void reveal(const QRectF &part);

    [[nodiscard]] QPointF bounded(QPointF position) const;
    void moveTo(QPointF position);
    void scrollBy(QPointF distance);
    [[nodiscard]] ScrollArea *scrollable(QPointF distance);
    [[nodiscard]] Gesture &gesture();
    void fling(QPointF velocity);

    QPointer<QQuickItem> m_content;
    QPointF m_exact; ///< The position with the fractions that touchpads and fine wheels add.
    QPointF m_position;
    Fold m_fold;
    Gesture m_gesture; ///< Kept by the outermost area for all nested ones.
    QVariantAnimation m_fling;
    QQuickItem *m_cover = nullptr;
    QMetaObject::Connection m_windowFocus;
    QMetaObject::Connection m_cursor;
    QPointer<QQuickItem> m_focusItem;
};
