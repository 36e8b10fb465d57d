#include "ui/accessibility/assistivetechnology.h"

AssistiveTechnology::AssistiveTechnology(QObject *parent)
    : QObject(parent)
{
    QAccessible::installActivationObserver(this);
}

AssistiveTechnology::~AssistiveTechnology()
{
    QAccessible::removeActivationObserver(this);
}

void AssistiveTechnology::tellShown(QQuickItem *item) const
{
    QAccessibleEvent event(item, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&event);
}

void AssistiveTechnology::tellSelected(QQuickItem *item) const
{
    QAccessibleEvent event(item, QAccessible::Selection);
    QAccessible::updateAccessibility(&event);
}
