#pragma once

#include <QMap>
#include <QObject>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

/// Settings of a desktop by name space, as the settings portal has them.
using PortalSettings = QMap<QString, QVariantMap>;

/// Whether any of the settings that desktops have for it asks for less motion. Pure.
[[nodiscard]] bool asksForReducedMotion(const PortalSettings &settings);

/// What the window takes over from the user's desktop. Main thread only.
class DesktopSettings : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The size of the system's font, in logical pixels.
    Q_PROPERTY(qreal fontSize READ fontSize CONSTANT)
    Q_PROPERTY(QString fixedFontFamily READ fixedFontFamily CONSTANT)
    /// False until the desktop has answered, and where there is none to ask.
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY reducedMotionChanged)

public:
    explicit DesktopSettings(QObject *parent = nullptr);

    [[nodiscard]] qreal fontSize() const;
    [[nodiscard]] QString fixedFontFamily() const;
    [[nodiscard]] bool reducedMotion() const { return m_reducedMotion; }

signals:
    void reducedMotionChanged();

private:
    void askDesktop();
    void setReducedMotion(bool reduced);

    bool m_reducedMotion = false;
};
