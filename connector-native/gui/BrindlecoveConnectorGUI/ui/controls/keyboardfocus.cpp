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
        const bool comesBack = m_leftForAWhile && reason != Qt::MouseFocusReason;
        m_lastByKeyboard = isByKeyboard(reason) || (comesBack && m_lastByKeyboard);
        setActive(m_lastByKeyboard);
    } else if (event->type() == QEvent::FocusOut) {
        m_leftForAWhile = leavesForAWhile(static_cast<QFocusEvent *>(event)->reason());
        setActive(false);
    } else if (event->type() == QEvent::MouseButtonPress) {
        setActive(m_lastByKeyboard = false);
    }
    return ItemFilter::eventFilter(watched, event);
}

void KeyboardFocus::setActive(bool active)
{
    if (m_active != active) {
        m_active = active;
        emit activeChanged();
    }
}
