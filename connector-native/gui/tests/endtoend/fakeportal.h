#pragma once

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

/// Settings by name space.
using PortalSettings = QMap<QString, QVariantMap>;

/// The settings portal of a desktop, there as long as the object. Main thread only.
class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit FakePortal(PortalSettings settings);
    ~FakePortal() override;
    Q_DISABLE_COPY_MOVE(FakePortal)

    [[nodiscard]] bool isThere() const { return m_isThere; }
    [[nodiscard]] bool wasAsked() const { return m_wasAsked; }

public slots:
    PortalSettings ReadAll(const QStringList &nameSpaces);

private:
    PortalSettings m_settings;
    bool m_isThere = false;
    bool m_wasAsked = false;
};
