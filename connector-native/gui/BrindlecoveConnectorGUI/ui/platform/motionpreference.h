#pragma once

#include <QMap>
#include <QObject>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

/// Settings of a desktop by name space, as the settings portal has them.
using PortalSettings = QMap<QString, QVariantMap>;

/// Whether any of the settings that desktops have for it asks for less motion. Pure.
[[nodiscard]] bool asksForReducedMotion(const PortalSettings &settings);

/// Whether the user's desktop asks for less motion: false until it has answered, and where there is none to
/// ask. Main thread only.
class MotionPreference : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool reduced READ isReduced NOTIFY reducedChanged)

public:
    explicit MotionPreference(QObject *parent = nullptr);

    [[nodiscard]] bool isReduced() const { return m_reduced; }

signals:
    void reducedChanged();

private:
    void askDesktop();
    void setReduced(bool reduced);

    bool m_reduced = false;
};
