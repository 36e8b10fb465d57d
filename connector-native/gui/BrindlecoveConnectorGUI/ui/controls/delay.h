#pragma once

#include <QObject>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

/// Signals that an interval has passed since a start. Unlike with a Timer, a further start does not postpone
/// an earlier one. Milliseconds; main thread only.
class Delay : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int interval MEMBER m_interval NOTIFY intervalChanged)

public:
    using QObject::QObject;

    Q_INVOKABLE void start() { QTimer::singleShot(m_interval, Qt::PreciseTimer, this, &Delay::elapsed); }

signals:
    void intervalChanged();
    void elapsed();

private:
    int m_interval = 0;
};
