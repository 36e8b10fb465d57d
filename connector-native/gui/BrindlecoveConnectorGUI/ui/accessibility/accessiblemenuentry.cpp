#include "ui/accessibility/accessiblemenuentry.h"

#include "ui/platform/popup.h"

QAccessible::State AccessibleMenuEntry::state() const
{
    QAccessible::State state = AccessibleItem::state();
    state.disabled = !item()->isEnabled();
    return state;
}

QAccessibleInterface *AccessibleMenuEntry::parent() const
{
    QQuickItem *menu = popupAround(item());
    return menu ? QAccessible::queryAccessibleInterface(menu) : AccessibleItem::parent();
}

void *AccessibleMenuEntry::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
}

void AccessibleMenuEntry::doAction(const QString &actionName)
{
    if (actionName == pressAction() && item()->isEnabled()) {
        // Queued: the caller gets its answer before the menu closes.
        QMetaObject::invokeMethod(item(), "clicked", Qt::QueuedConnection);
    }
}
