#pragma once

#include "ui/accessibility/accessibleitem.h"

/// An entry of a context menu.
// Qt 6.4: the default interface does not expose which entries are disabled.
class AccessibleMenuEntry : public AccessibleItem, public QAccessibleActionInterface
{
public:
    using AccessibleItem::AccessibleItem;

    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::MenuItem; }
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QAccessibleInterface *parent() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString &actionName) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString &) const override { return {}; }

protected:
    [[nodiscard]] QString name() const override { return object()->property("text").toString(); }
};
