#pragma once

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <QtDBus/qdbusconnection.h>
#include <QtDBus/qdbusmetatype.h>

/// Settings by name space.
using PortalSettings = QMap<QString, QVariantMap>;

/// The settings portal of a desktop, there as long as the object. Main thread only.
class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit FakePortal(PortalSettings settings)
        : m_settings(std::move(settings))
    {
        qDBusRegisterMetaType<PortalSettings>();
        QDBusConnection bus = QDBusConnection::sessionBus();
        m_isThere = bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                                       QDBusConnection::ExportAllSlots)
            && bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    ~FakePortal() override
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop"));
        bus.unregisterObject(QStringLiteral("/org/freedesktop/portal/desktop"));
    }
    Q_DISABLE_COPY_MOVE(FakePortal)

    [[nodiscard]] bool isThere() const { return m_isThere; }
    [[nodiscard]] bool wasAsked() const { return m_wasAsked; }

public slots:
    PortalSettings ReadAll(const QStringList &nameSpaces)
    {
        m_wasAsked = true;
        PortalSettings answer;
        for (const QString &nameSpace : nameSpaces)
            answer.insert(nameSpace, m_settings.value(nameSpace));
        return answer;
    }

private:
    PortalSettings m_settings;
    bool m_isThere = false;
    bool m_wasAsked = false;
};
