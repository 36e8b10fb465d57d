#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QVariantAnimation>

/// A viewport onto one larger item, scrolled by wheel, touchpad, touch and keyboard. What has been scrolled
/// to its end leaves the next gesture to the area around it; a gesture that has begun stays where it began.
/// An item that gets the keyboard focus from another, or moves its text cursor, is scrolled into view.
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

    [[nodiscard]] QQuickItem *content() const { return m_content; }
    void setContent(QQuickItem *content);

    /// How far the content is scrolled; always within 0 and the maximum, in whole pixels.
    [[nodiscard]] qreal contentX() const { return m_position.x(); }
    [[nodiscard]] qreal contentY() const { return m_position.y(); }
    void setContentY(qreal contentY);
    [[nodiscard]] qreal maximumX() const;
    [[nodiscard]] qreal maximumY() const;

    /// Follows content that has moved under the view. Unlike a scroll, that ends no gesture.
    void moveBy(qreal distance);

    /// Content too tall for a renderer's single precision leaves out a part of itself: while the view is
    /// between `top` and `height` pixels below it, the content stands still and shows what belongs there.
    void setFold(qreal top, qreal height);
    /// How much of what was left out lies above the view.
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
    /// The turns of a wheel that follow each other at once, or one movement of fingers.
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
    [[nodiscard]] ScrollArea *enclosing() const;
    [[nodiscard]] ScrollArea *scrollable(QPointF distance);
    [[nodiscard]] Gesture &gesture();
    void fling(QPointF velocity);

    QPointer<QQuickItem> m_content;
    QPointF m_exact; ///< Where touchpads and fine wheels have scrolled to, pixels or not.
    QPointF m_position;
    Fold m_fold;
    Gesture m_gesture; ///< Of the outermost area, for all within it.
    QVariantAnimation m_fling;
    QQuickItem *m_cover = nullptr;
    QMetaObject::Connection m_windowFocus;
    QMetaObject::Connection m_cursor;
    QPointer<QQuickItem> m_focusItem;
};
