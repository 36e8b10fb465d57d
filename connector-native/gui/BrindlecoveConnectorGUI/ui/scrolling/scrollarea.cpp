#include "ui/scrolling/scrollarea.h"

#include <QGuiApplication>
#include <QMetaProperty>
#include <QQuickWindow>
#include <QStyleHints>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

constexpr qreal LineStep = 20;
constexpr qreal RevealMargin = 24;

// A touchpad says how many pixels, a wheel how many eighths of a degree: a notch is fifteen degrees.
qreal scrolledPixels(const QWheelEvent &event)
{
    if (!event.pixelDelta().isNull()) {
        return event.pixelDelta().y();
    }
    return event.angleDelta().y() / 120.0 * QGuiApplication::styleHints()->wheelScrollLines() * LineStep;
}

// Where a key scrolls to, from y, in a viewport of the given height.
std::optional<qreal> keyTarget(int key, qreal y, qreal height, qreal maximum)
{
    const qreal page = height - LineStep;
    switch (key) {
    case Qt::Key_PageUp:
        return y - page;
    case Qt::Key_PageDown:
        return y + page;
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return maximum;
    case Qt::Key_Up:
        return y - LineStep;
    case Qt::Key_Down:
        return y + LineStep;
    default:
        return std::nullopt;
    }
}

} // namespace

ScrollArea::ScrollArea(QQuickItem *parent)
    : QQuickItem(parent)
{
    setClip(true);
}

// The focus leaves what is inside while that is being destroyed, and is no longer to be followed then.
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
    if (m_content) {
        m_content->disconnect(this);
    }
    m_content = content;
    if (m_content) {
        m_content->setParentItem(this);
        m_content->setWidth(width());
        connect(m_content, &QQuickItem::heightChanged, this, &ScrollArea::followExtent);
    }
    emit contentChanged();
    followExtent();
}

qreal ScrollArea::maximumY() const
{
    return m_content ? std::max(0.0, std::ceil(m_content->height() - height())) : 0;
}

void ScrollArea::setContentY(qreal contentY)
{
    // Whole pixels keep text sharp, and positions far down exact in the renderer's single precision.
    const qreal bounded = std::round(std::clamp(contentY, 0.0, maximumY()));
    if (m_content) {
        m_content->setY(-bounded);
    }
    if (bounded != m_contentY) {
        m_contentY = bounded;
        emit contentYChanged();
    }
}

void ScrollArea::followExtent()
{
    emit extentChanged();
    setContentY(m_contentY);
}

void ScrollArea::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (m_content) {
        m_content->setWidth(newGeometry.width());
    }
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

void ScrollArea::wheelEvent(QWheelEvent *event)
{
    const qreal before = m_contentY;
    setContentY(m_contentY - scrolledPixels(*event));
    event->setAccepted(m_contentY != before);
}

void ScrollArea::keyPressEvent(QKeyEvent *event)
{
    const std::optional<qreal> target = keyTarget(event->key(), m_contentY, height(), maximumY());
    const qreal before = m_contentY;
    if (target) {
        setContentY(*target);
    }
    event->setAccepted(m_contentY != before);
}

void ScrollArea::followFocus()
{
    disconnect(m_cursor);
    QQuickItem *item = window() ? window()->activeFocusItem() : nullptr;
    m_focusItem = item && m_content && m_content->isAncestorOf(item) ? item : nullptr;
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
    // What is under the pointer is seen already, and must not move away from it between press and release.
    if (QGuiApplication::mouseButtons() == Qt::NoButton) {
        polish();
    }
}

// Of an item that has a text cursor and is too tall to be seen whole, or lies under a held mouse button and
// must not move away, what counts is the cursor.
QRectF ScrollArea::focusedPart() const
{
    const QRectF whole(QPointF(), m_focusItem->size());
    const QRectF cursor = m_focusItem->property("cursorRectangle").toRectF();
    const bool fits = whole.height() + 2 * RevealMargin <= height();
    return cursor.isValid() && (!fits || QGuiApplication::mouseButtons() != Qt::NoButton) ? cursor : whole;
}

// Not before polishing: a press moves the focus first and the text cursor only then.
void ScrollArea::updatePolish()
{
    if (m_focusItem && m_focusItem->hasActiveFocus()) {
        reveal(m_focusItem->mapRectToItem(m_content, focusedPart()));
    }
}

void ScrollArea::reveal(const QRectF &rect)
{
    const qreal top = rect.top() - RevealMargin;
    const qreal bottom = rect.bottom() + RevealMargin;
    if (top < m_contentY) {
        setContentY(top);
    } else if (bottom > m_contentY + height()) {
        setContentY(bottom - height());
    }
}
