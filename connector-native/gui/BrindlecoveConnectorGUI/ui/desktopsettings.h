#pragma once

#include <QObject>
#include <qqmlregistration.h>

/// What the window takes over from the user's desktop, read once.
class DesktopSettings : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The size of the system's font, in logical pixels.
    Q_PROPERTY(qreal fontSize READ fontSize CONSTANT)
    Q_PROPERTY(QString fixedFontFamily READ fixedFontFamily CONSTANT)

public:
    using QObject::QObject;

    [[nodiscard]] qreal fontSize() const;
    [[nodiscard]] QString fixedFontFamily() const;
};
