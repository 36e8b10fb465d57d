#pragma once

#include <QAccessible>
#include <QQuickItem>

/// Those who read the window to somebody: whether there are any, and what they are told because Qt does not.
/// Main thread only.
class AssistiveTechnology : public QObject, private QAccessible::ActivationObserver
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)

public:
    explicit AssistiveTechnology(QObject *parent = nullptr);
    ~AssistiveTechnology() override;
    Q_DISABLE_COPY_MOVE(AssistiveTechnology)

    [[nodiscard]] bool isActive() const { return QAccessible::isActive(); }

    /// The item can be seen now; when it no longer can, Qt says so.
    Q_INVOKABLE void tellShown(QQuickItem *item) const;
    /// Another item of its kind is, or is no longer, the selected one.
    Q_INVOKABLE void tellSelected(QQuickItem *item) const;
    /// What the item opens is open now, or no longer.
    Q_INVOKABLE void tellExpanded(QQuickItem *item) const;

signals:
    void activeChanged();

private:
    void accessibilityActiveChanged(bool) override { emit activeChanged(); }
};
