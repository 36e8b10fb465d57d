#pragma once

#include <QPointer>
#include <QQuickItem>

/// Whether an item has the focus and got it by the keyboard, so that a focus ring can be shown to those who
/// need it and to nobody else. Main thread only.
class KeyboardFocus : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *item READ item WRITE setItem NOTIFY itemChanged)
    Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem *item() const { return m_item; }
    void setItem(QQuickItem *item);
    [[nodiscard]] bool isActive() const { return m_active; }

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void itemChanged();
    void activeChanged();

private:
    void setActive(bool active);

    QPointer<QQuickItem> m_item;
    bool m_active = false;
    bool m_lastByKeyboard = false;
};
