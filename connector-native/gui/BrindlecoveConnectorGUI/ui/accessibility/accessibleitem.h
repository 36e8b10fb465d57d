#pragma once

#include <QAccessibleObject>
#include <QQuickItem>

class PressArea;

/// A text for assistive technologies, with visible NULs: D-Bus ends a text at the first one.
[[nodiscard]] QString speakable(QString text);

/// The accessible interface of one item of the window. Every such item is a leaf: the window itself is its
/// parent, and their order is the order of the items. Main thread only.
class AccessibleItem : public QAccessibleObject
{
public:
    explicit AccessibleItem(QQuickItem *item)
        : QAccessibleObject(item)
    {
    }

    [[nodiscard]] QWindow *window() const override;
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessibleInterface *parent() const override;
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] QAccessibleInterface *child(int) const override { return nullptr; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString &) override { }
    [[nodiscard]] QAccessible::State state() const override;

protected:
    [[nodiscard]] virtual QString name() const = 0;
    [[nodiscard]] virtual QString description() const { return {}; }
    [[nodiscard]] QQuickItem *item() const { return static_cast<QQuickItem *>(object()); }
    [[nodiscard]] QRect onScreen(const QRectF &rect) const;
};

/// A text that is only shown.
class AccessibleLabel : public AccessibleItem
{
public:
    using AccessibleItem::AccessibleItem;

    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::StaticText; }

protected:
    [[nodiscard]] QString name() const override { return object()->property("text").toString(); }
};

/// A button, or a tab when it says whether it is selected. A button that says whether it is expanded opens
/// and closes something.
class AccessiblePressArea : public AccessibleItem, public QAccessibleActionInterface
{
public:
    explicit AccessiblePressArea(PressArea *area);

    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString &actionName) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString &) const override { return {}; }

protected:
    [[nodiscard]] QString name() const override { return object()->property("title").toString(); }
    [[nodiscard]] QString description() const override;

private:
    [[nodiscard]] bool isSelected() const { return object()->property("selected").toBool(); }
    [[nodiscard]] bool isTab() const { return object()->property("selected").isValid(); }
};
