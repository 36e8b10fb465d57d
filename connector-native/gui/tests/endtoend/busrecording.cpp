#include "busrecording.h"

#include <QTest>
#include <QtDBus/qdbusconnection.h>
#include <QtDBus/qdbusmessage.h>
#include <QtDBus/qdbusreply.h>

using namespace Qt::StringLiterals;

BusRecording::BusRecording(const QString &busAddress)
{
    m_monitor.start(u"dbus-monitor"_s, {u"--address"_s, busAddress, u"--binary"_s});
    constexpr int startTimeout = 20000;
    // The bus greets a monitor, and from then on hides nothing from it.
    if (!QTest::qWaitFor([this] { return !bytes().isEmpty(); }, startTimeout))
        qFatal("dbus-monitor failed");
}

BusRecording::~BusRecording()
{
    m_monitor.terminate();
    m_monitor.waitForFinished();
}

QString BusRecording::accessibilityAddress()
{
    const auto question = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                         u"org.a11y.Bus"_s, u"GetAddress"_s);
    return QDBusReply<QString>(QDBusConnection::sessionBus().call(question)).value();
}

QString BusRecording::sessionAddress()
{
    return qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
}

QByteArray BusRecording::bytes()
{
    return m_bytes += m_monitor.readAllStandardOutput();
}
