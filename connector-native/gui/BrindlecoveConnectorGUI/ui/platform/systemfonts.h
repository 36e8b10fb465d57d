#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// The fonts the user's desktop has chosen, as they are when the program starts. Main thread only.
class SystemFonts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// In logical pixels.
    Q_PROPERTY(qreal size READ size CONSTANT)
    Q_PROPERTY(QString fixedFamily READ fixedFamily CONSTANT)

public:
    using QObject::QObject;

    [[nodiscard]] qreal size() const;
    [[nodiscard]] QString fixedFamily() const;
};
