#pragma once

#include <QMap>
#include <QObject>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

/// Settings of a desktop by name space, as the settings portal has them.
using PortalSettings = QMap<QString, QVariantMap>;

/// What a user can ask all programs of a desktop for.
struct UserWishes
{
    bool reducedMotion = false;
    bool highContrast = false;

    bool operator==(const UserWishes &other) const = default;
};

/// What is asked for by any of the settings that desktops have for it. Pure.
[[nodiscard]] UserWishes wishesIn(const PortalSettings &settings);

/// What the user asks the desktop for: nothing until it has answered, and where there is none to ask. Main
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
