#include "ui/scrolling/scrollarea.h"

#include "ui/platform/popup.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QMetaProperty>
#include <QQuickWindow>
#include <QStyleHints>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr qreal revealMargin = 24;
// In pixels per second, and in pixels per second squared.
constexpr qreal slowestFling = 50;
constexpr qreal flingDeceleration = 1500;
// A mouse wheel sends no end of its gesture: after this pause, in milliseconds, a turn begins a new one.
constexpr quint64 wheelPause = 250;

qreal lineStep()
{
    return QFontMetricsF(QGuiApplication::font()).lineSpacing();
}

// A touchpad sends pixels, a wheel eighths of a degree; a notch is fifteen degrees.
QPointF scrolledBy(const QWheelEvent &event)
{
    if (!event.pixelDelta().isNull()) {
        return -event.pixelDelta();
    }
    return QPointF(event.angleDelta()) / -120 * QGuiApplication::styleHints()->wheelScrollLines()
        * lineStep();
}

// How far a key scrolls in a viewport of the given size.
QPointF keyDistance(int key, QSizeF size)
{
    constexpr qreal toTheEnd = 1e12;
    const qreal line = lineStep();
    switch (key) {
    case Qt::Key_PageUp:
        return {0, line - size.height()};
    case Qt::Key_PageDown:
        return {0, size.height() - line};
    case Qt::Key_Home:
        return {0, -toTheEnd};
    case Qt::Key_End:
        return {0, toTheEnd};
    case Qt::Key_Up:
        return {0, -line};
    case Qt::Key_Down:
        return {0, line};
    case Qt::Key_Left:
        return {-line, 0};
    case Qt::Key_Right:
        return {line, 0};
    default:
        return {};
    }
}

// How far to scroll along one axis to reveal a range, or as much of it as fits into the viewport.
qreal revealDistance(qreal from, qreal to, qreal extent)
{
    if (to - from > extent) {
        const bool fillsView = from <= 0 && to >= extent;
        return fillsView ? 0 : from;
    }
    const qreal margin = std::min((extent - (to - from)) / 2, revealMargin);
    return from < margin ? from - margin : std::max(0.0, to + margin - extent);
}

// Covers moving content, so that the touch that stops it presses nothing.
class FlingCover : public QQuickItem
{
public:
    FlingCover(QQuickItem *parent, QVariantAnimation *fling)
        : QQuickItem(parent)
        , m_fling(fling)
    {
        setAcceptTouchEvents(true);
        connect(fling, &QAbstractAnimation::stateChanged, this, &FlingCover::goUnlessTouched);
    }

protected:
    void touchEvent(QTouchEvent *event) override
    {
        m_touched = event->type() == QEvent::TouchBegin || event->type() == QEvent::TouchUpdate;
        m_fling->stop();
        goUnlessTouched();
    }

    void touchUngrabEvent() override
    {
        m_touched = false;
        goUnlessTouched();
    }

private:
    void goUnlessTouched() { setVisible(m_touched); }

    QVariantAnimation *m_fling;
    bool m_touched = false;
};

} // namespace

ScrollArea::ScrollArea(QQuickItem *parent)
    : QQuickItem(parent)
{
    setClip(true);
    m_fling.setEasingCurve(QEasingCurve::OutQuad);
}

// While the content is destroyed, the focus changes; these changes must not be followed.
ScrollArea::~ScrollArea()
{
    disconnect(m_windowFocus);
    disconnect(m_cursor);
}

void ScrollArea::setContent(QQuickItem *content)
{
    if (m_content == content) {
        return;
    }
    m_content = content;
    if (m_content) {
        m_content->setParentItem(this);
        connect(m_content, &QQuickItem::heightChanged, this, &ScrollArea::followExtent);
        connect(m_content, &QQuickItem::implicitWidthChanged, this, &ScrollArea::followExtent);
    }
    emit contentChanged();
    followExtent();
}

qreal ScrollArea::maximumX() const
{
    return m_content ? std::max(0.0, std::ceil(m_content->width() - width())) : 0;
}

qreal ScrollArea::maximumY() const
{
    return m_content ? std::max(0.0, std::ceil(m_content->height() + m_fold.height - height())) : 0;
}

QPointF ScrollArea::bounded(QPointF position) const
{
    return {std::clamp(position.x(), 0.0, maximumX()), std::clamp(position.y(), 0.0, maximumY())};
}

void ScrollArea::setContentY(qreal contentY)
{
    m_fling.stop();
    moveTo({m_position.x(), contentY});
}

void ScrollArea::moveBy(qreal distance)
{
    moveTo(m_exact + QPointF(0, distance));
}

void ScrollArea::scrollBy(QPointF distance)
{
    m_fling.stop();
    moveTo(m_exact + distance);
}

void ScrollArea::moveTo(QPointF position)
{
    m_exact = bounded(position);
    const QPointF before = m_position;
    // Whole pixels keep text sharp.
    m_position = {std::round(m_exact.x()), std::round(m_exact.y())};
    if (m_content) {
        m_content->setPosition({-m_position.x(), folded() - m_position.y()});
    }
    if (m_position.x() != before.x()) {
        emit contentXChanged();
    }
    if (m_position.y() != before.y()) {
        emit contentYChanged();
    }
}

void ScrollArea::setFold(qreal top, qreal height)
{
    const Fold fold = height > 0 ? Fold{std::round(top), std::round(height)} : Fold();
    if (fold != m_fold) {
        m_fold = fold;
        followExtent();
    }
}

qreal ScrollArea::folded() const
{
    return std::clamp(m_position.y() - m_fold.top, 0.0, m_fold.height);
}

void ScrollArea::followExtent()
{
    if (m_content) {
        m_content->setWidth(std::max(width(), m_content->implicitWidth()));
    }
    emit extentChanged();
    moveTo(m_exact);
}

void ScrollArea::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    followExtent();
}

void ScrollArea::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange) {
        disconnect(m_windowFocus);
        if (data.window) {
            m_windowFocus =
                connect(data.window, &QQuickWindow::activeFocusItemChanged, this, &ScrollArea::followFocus);
        }
    }
}

ScrollArea *ScrollArea::around(const QQuickItem &item)
{
    QQuickItem *ancestor = item.parentItem();
    while (ancestor && !qobject_cast<ScrollArea *>(ancestor)) {
        ancestor = ancestor->parentItem();
    }
    return static_cast<ScrollArea *>(ancestor);
}

// The innermost area, from this one outwards, that can scroll further in a direction.
ScrollArea *ScrollArea::scrollable(QPointF distance)
{
    ScrollArea *area = this;
    while (area && area->bounded(area->m_exact + distance) == area->m_exact) {
        area = around(*area);
    }
    return area;
}

ScrollArea::Gesture &ScrollArea::gesture()
{
    ScrollArea *outer = around(*this);
    return outer ? outer->gesture() : m_gesture;
}

bool ScrollArea::Gesture::goesOnWith(const QWheelEvent &event) const
{
    if (!area || event.phase() == Qt::ScrollBegin) {
        return false;
    }
    const bool atOnce = event.timestamp() - lastTime < wheelPause;
    const bool here = area->contains(area->mapFromScene(event.scenePosition()));
    return event.phase() != Qt::NoScrollPhase || (atOnce && here);
}

void ScrollArea::wheelEvent(QWheelEvent *event)
{
    const QPointF distance = scrolledBy(*event);
    Gesture &current = gesture();
    if (!current.goesOnWith(*event)) {
        current.area = scrollable(distance);
    }
    current.lastTime = event->timestamp();
    event->setAccepted(current.area);
    if (current.area) {
        current.area->scrollBy(distance);
    }
    if (event->phase() == Qt::ScrollEnd) {
        current.area = nullptr;
    }
}

void ScrollArea::beginDrag()
{
    gesture() = {};
    gesture().isDrag = true;
}

void ScrollArea::dragTo(qreal x, qreal y)
{
    Gesture &current = gesture();
    const QPointF distance = std::exchange(current.dragged, {x, y}) - current.dragged;
    if (!current.area) {
        current.area = scrollable(distance);
    }
    if (current.area) {
        current.area->scrollBy(distance);
    }
}

void ScrollArea::endDrag(qreal velocityX, qreal velocityY)
{
    if (gesture().area) {
        gesture().area->fling({-velocityX, -velocityY});
    }
    gesture() = {};
}

// Constant deceleration: the distance is a parabola over time. Scrolls by differences, since the content may
// move meanwhile.
void ScrollArea::fling(QPointF velocity)
{
    const qreal speed = std::hypot(velocity.x(), velocity.y());
    if (speed < slowestFling) {
        return;
    }
    m_fling.stop();
    m_fling.disconnect(this);
    m_fling.setStartValue(QPointF());
    m_fling.setEndValue(velocity * speed / (2 * flingDeceleration));
    m_fling.setDuration(static_cast<int>(1000 * speed / flingDeceleration));
    connect(&m_fling, &QVariantAnimation::valueChanged, this,
            [this, last = QPointF()](const QVariant &value) mutable {
                moveTo(m_exact + value.toPointF() - std::exchange(last, value.toPointF()));
            });
    m_fling.start();
    m_cover = m_cover ? m_cover : new FlingCover(this, &m_fling);
    m_cover->setSize(size());
    m_cover->setVisible(true);
}

void ScrollArea::keyPressEvent(QKeyEvent *event)
{
    const QPointF before = m_position;
    scrollBy(keyDistance(event->key(), size()));
    event->setAccepted(m_position != before);
}

void ScrollArea::followFocus()
{
    QQuickItem *item = window() ? window()->activeFocusItem() : nullptr;
    // In an inactive window no item has the focus, a menu borrows it, and as it closes the root item has it
    // for a moment: the same item gets it back.
    const bool isLent = !item || item == window()->contentItem() || popupAround(item);
    if (isLent || item == m_focusItem) {
        return;
    }
    disconnect(m_cursor);
    const bool isInside = m_content && (item == m_content || m_content->isAncestorOf(item));
    m_focusItem = isInside ? item : nullptr;
    if (!m_focusItem) {
        return;
    }
    const QMetaObject *meta = m_focusItem->metaObject();
    const QMetaProperty cursor = meta->property(meta->indexOfProperty("cursorRectangle"));
    if (cursor.hasNotifySignal()) {
        const QMetaObject &own = staticMetaObject;
        m_cursor =
            connect(m_focusItem, cursor.notifySignal(), this, own.method(own.indexOfSlot("revealCursor()")));
    }
    // An item under the pressed pointer is in view, and must not move between press and release.
    if (QGuiApplication::mouseButtons() == Qt::NoButton) {
        polish();
    }
}

// The part of an item to be revealed: its text cursor, if it is taller than the viewport or under a held
// mouse button. Content of a nested area is scrolled by that area.
QRectF ScrollArea::focusedPart() const
{
    for (const QQuickItem *item = m_focusItem; item != m_content; item = item->parentItem()) {
        if (qobject_cast<const ScrollArea *>(item)) {
            return item->mapRectToItem(this, QRectF(QPointF(), item->size()));
        }
    }
    const QRectF whole(QPointF(), m_focusItem->size());
    const QRectF cursor = m_focusItem->property("cursorRectangle").toRectF();
    const bool fits = whole.height() + 2 * revealMargin <= height();
    const bool onlyCursor = cursor.isValid() && (!fits || QGuiApplication::mouseButtons() != Qt::NoButton);
    return m_focusItem->mapRectToItem(this, onlyCursor ? cursor : whole);
}

// Deferred to polishing: a press moves the focus before the text cursor. Not while a finger drags the
// content.
void ScrollArea::updatePolish()
{
    if (!gesture().isDrag && m_focusItem && m_focusItem->hasActiveFocus()) {
        reveal(focusedPart());
    }
}

void ScrollArea::reveal(const QRectF &part)
{
    const QPointF distance(revealDistance(part.left(), part.right(), width()),
                           revealDistance(part.top(), part.bottom(), height()));
    if (!distance.isNull()) {
        scrollBy(distance);
    }
}
