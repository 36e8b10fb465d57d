#include "fakeportal.h"

#include <QtDBus/qdbusconnection.h>
#include <QtDBus/qdbusmetatype.h>

FakePortal::FakePortal(PortalSettings settings)
    : m_settings(std::move(settings))
{
    qDBusRegisterMetaType<PortalSettings>();
    QDBusConnection bus = QDBusConnection::sessionBus();
    m_isThere = bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                                   QDBusConnection::ExportAllSlots)
        && bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
}

FakePortal::~FakePortal()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop"));
    bus.unregisterObject(QStringLiteral("/org/freedesktop/portal/desktop"));
}

PortalSettings FakePortal::ReadAll(const QStringList &nameSpaces)
{
    m_wasAsked = true;
    PortalSettings answer;
    for (const QString &nameSpace : nameSpaces)
        answer.insert(nameSpace, m_settings.value(nameSpace));
    return answer;
}

#include "moc_fakeportal.cpp"
