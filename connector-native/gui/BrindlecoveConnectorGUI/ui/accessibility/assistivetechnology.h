#pragma once

#include <QAccessible>
#include <QQuickItem>

/// Whether an assistive technology is active, and the events for it that Qt Quick does not send. Main thread
/// only.
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

    /// The item has become visible; Qt itself sends the opposite event.
    Q_INVOKABLE void tellShown(QQuickItem *item) const;
    /// The item has become, or is no longer, the selected one of its kind.
    Q_INVOKABLE void tellSelected(QQuickItem *item) const;

signals:
    void activeChanged();

private:
    void accessibilityActiveChanged(bool) override { emit activeChanged(); }
};
