#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// Shows the wait cursor over the whole window while active. Main thread only.
class WaitCursor : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged)

public:
    using QObject::QObject;
    ~WaitCursor() override { setActive(false); }

    [[nodiscard]] bool isActive() const { return m_active; }
    void setActive(bool active);

signals:
    void activeChanged();

private:
    bool m_active = false;
};
