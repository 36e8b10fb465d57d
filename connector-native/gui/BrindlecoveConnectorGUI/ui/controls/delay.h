#pragma once

#include <QObject>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

/// Says when an interval has passed since a start. Unlike a Timer's, each start is one of its own: it does
/// not put off an earlier one. Milliseconds; main thread only.
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
