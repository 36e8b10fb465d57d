#include "ui/accessibility/accessiblemenuentry.h"

QAccessible::State AccessibleMenuEntry::state() const
{
    QAccessible::State state = AccessibleItem::state();
    state.disabled = !item()->isEnabled();
    return state;
}

QAccessibleInterface *AccessibleMenuEntry::parent() const
{
    QQuickItem *ancestor = item()->parentItem();
    while (ancestor && !ancestor->inherits("QQuickPopupItem")) {
        ancestor = ancestor->parentItem();
    }
    return ancestor ? QAccessible::queryAccessibleInterface(ancestor) : AccessibleItem::parent();
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
