#pragma once

#include <QMap>
#include <QObject>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

/// Settings of a desktop by name space, as in the settings portal.
using PortalSettings = QMap<QString, QVariantMap>;

/// Preferences that a user sets for all programs of a desktop.
struct UserWishes
{
    bool reducedMotion = false;
    bool highContrast = false;

    bool operator==(const UserWishes &other) const = default;
};

/// The preferences in a desktop's settings; desktops have different settings for one preference. Pure.
[[nodiscard]] UserWishes wishesIn(const PortalSettings &settings);

/// The user's preferences: none until the desktop has answered, and none where no desktop answers. Main
/// thread only.
class UserPreferences : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY changed)
    Q_PROPERTY(bool highContrast READ highContrast NOTIFY changed)

public:
    explicit UserPreferences(QObject *parent = nullptr);

    [[nodiscard]] bool reducedMotion() const { return m_wishes.reducedMotion; }
    [[nodiscard]] bool highContrast() const { return m_wishes.highContrast; }

signals:
    void changed();

private:
    void askDesktop();
    void setWishes(const UserWishes &wishes);

    UserWishes m_wishes;
};
