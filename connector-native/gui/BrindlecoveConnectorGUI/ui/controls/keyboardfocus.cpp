#include "ui/controls/keyboardfocus.h"

#include <QFocusEvent>

namespace {

bool isByKeyboard(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason
        || reason == Qt::ShortcutFocusReason;
}

// When the user comes back to the window or from the item's menu, the ring is as it was before.
bool comesBack(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

} // namespace

bool KeyboardFocus::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        m_lastByKeyboard = comesBack(reason) ? m_lastByKeyboard : isByKeyboard(reason);
        setActive(m_lastByKeyboard);
    } else if (event->type() == QEvent::FocusOut) {
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
