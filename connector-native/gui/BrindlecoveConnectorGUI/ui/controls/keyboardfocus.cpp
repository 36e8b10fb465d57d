#include "ui/controls/keyboardfocus.h"

#include <QFocusEvent>

namespace {

bool isByKeyboard(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason
        || reason == Qt::ShortcutFocusReason;
}

// To another window or to the item's menu.
bool leavesForAWhile(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

} // namespace

bool KeyboardFocus::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        setActive(isByKeyboard(reason) || (m_isToComeBack && reason != Qt::MouseFocusReason));
    } else if (event->type() == QEvent::FocusOut) {
        m_isToComeBack = m_active && leavesForAWhile(static_cast<QFocusEvent *>(event)->reason());
        setActive(false);
    } else if (event->type() == QEvent::MouseButtonPress) {
        m_isToComeBack = false;
        setActive(false);
    }
    return ItemFilter::eventFilter(watched, event);
}

void KeyboardFocus::setActive(bool active)
{
    if (m_active == active) {
        return;
    }
    m_active = active;
    m_shownRing.reset();
    if (m_active && m_ring) {
        const QVariantMap properties{
            {QStringLiteral("parent"), QVariant::fromValue(qobject_cast<QQuickItem *>(parent()))}};
        m_shownRing.reset(m_ring->createWithInitialProperties(properties, m_ring->creationContext()));
    }
    emit activeChanged();
}
