#pragma once

#include <QPointer>
#include <QQuickItem>

/// Base class for event filters of one item. A derived class overrides eventFilter(). Main thread only.
class ItemFilter : public QObject
{
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QQuickItem *item READ item WRITE setItem NOTIFY itemChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem *item() const { return m_item; }
    void setItem(QQuickItem *item);

signals:
    void itemChanged();

private:
    QPointer<QQuickItem> m_item;
};
