#include "keylistener.h"

#include "accessiblenode.h"

#include <QTimer>
#include <QtDBus/qdbusargument.h>
#include <QtDBus/qdbusconnection.h>
#include <QtDBus/qdbusmessage.h>
#include <QtDBus/qdbusmetatype.h>
#include <QtDBus/qdbusvirtualobject.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// Of the accessibility protocol: a key that a listener registers for; with none, it gets all.
struct KeyDefinition
{
    int code = 0;
    int symbol = 0;
    QString name;
    int unused = 0;
};

/// Of the accessibility protocol: the program waits for the answer, which may keep the key from it.
struct ListenerMode
{
    bool synchronous = true;
    bool preemptive = true;
    bool global = false;
};

QDBusArgument &operator<<(QDBusArgument &argument, const KeyDefinition &key)
{
    argument.beginStructure();
    argument << key.code << key.symbol << key.name << key.unused;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, KeyDefinition &key)
{
    argument.beginStructure();
    argument >> key.code >> key.symbol >> key.name >> key.unused;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const ListenerMode &mode)
{
    argument.beginStructure();
    argument << mode.synchronous << mode.preemptive << mode.global;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ListenerMode &mode)
{
    argument.beginStructure();
    argument >> mode.synchronous >> mode.preemptive >> mode.global;
    argument.endStructure();
    return argument;
}

// A listener registers once for each set of modifiers: none, and Shift.
constexpr uint modifierSets = 2;

const auto listenerPath = u"/listener"_s;

void callController(const QString &method, uint modifiers, const QVariantList &more = {})
{
    constexpr uint pressesAndReleases = 3;
    auto request = QDBusMessage::createMethodCall(u"org.a11y.atspi.Registry"_s,
                                                  u"/org/a11y/atspi/registry/deviceeventcontroller"_s,
                                                  u"org.a11y.atspi.DeviceEventController"_s, method);
    const QVariantList arguments{QVariant::fromValue(QDBusObjectPath(listenerPath)),
                                 QVariant::fromValue(QList<KeyDefinition>()), modifiers, pressesAndReleases};
    request.setArguments(arguments + more);
    const QDBusMessage answer = accessibilityBus().call(request);
    if (answer.type() == QDBusMessage::ErrorMessage)
        qFatal("%s: %s", qPrintable(method), qPrintable(answer.errorMessage()));
}

} // namespace

class KeyListener::Answers : public QDBusVirtualObject
{
public:
    Answers(std::chrono::milliseconds time, QString keptKey)
        : m_time(time)
        , m_keptKey(std::move(keptKey))
    {
    }

    [[nodiscard]] QStringList told() const { return m_told; }

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        message.setDelayedReply(true);
        QMetaObject::invokeMethod(this, [this, message, connection] { beAsked(message, connection); });
        return true;
    }

    void hurry()
    {
        m_time = std::chrono::milliseconds::zero();
        // The timers of this thread cannot be stopped from another one.
        qDeleteAll(findChildren<QTimer *>());
        while (!m_due.isEmpty())
            answer();
    }

private:
    void beAsked(const QDBusMessage &message, const QDBusConnection &connection)
    {
        m_told.append(keyIn(message.arguments().value(0).value<QDBusArgument>()));
        // Shift has no name.
        const bool isKept = !m_keptKey.isEmpty() && m_told.constLast() == m_keptKey;
        m_due.append([message, connection, isKept] { connection.send(message.createReply(isKept)); });
        auto *timer = new QTimer(this);
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
        timer->callOnTimeout(this, &Answers::answer);
        timer->start(m_time);
    }

    void answer()
    {
        if (!m_due.isEmpty())
            m_due.takeFirst()();
    }

    [[nodiscard]] static QString keyIn(const QDBusArgument &event)
    {
        uint type = 0;
        int symbol = 0;
        uint code = 0;
        uint modifiers = 0;
        int timestamp = 0;
        QString text;
        bool isText = false;
        event.beginStructure();
        event >> type >> symbol >> code >> modifiers >> timestamp >> text >> isText;
        event.endStructure();
        return text;
    }

    std::chrono::milliseconds m_time;
    QString m_keptKey;
    QStringList m_told;
    QList<std::function<void()>> m_due;
};

KeyListener::KeyListener(std::chrono::milliseconds time, const QString &keptKey)
    : m_answers(std::make_unique<Answers>(time, keptKey))
{
    qDBusRegisterMetaType<KeyDefinition>();
    qDBusRegisterMetaType<QList<KeyDefinition>>();
    qDBusRegisterMetaType<ListenerMode>();
    m_answers->moveToThread(&m_thread);
    m_thread.start();
    if (!QDBusConnection(accessibilityBus()).registerVirtualObject(listenerPath, m_answers.get()))
        qFatal("the listener cannot be called");
    for (uint modifiers = 0; modifiers < modifierSets; ++modifiers)
        callController(u"RegisterKeystrokeListener"_s, modifiers, {QVariant::fromValue(ListenerMode())});
}

KeyListener::~KeyListener()
{
    stop();
}

QStringList KeyListener::stop()
{
    if (!m_thread.isRunning())
        return m_answers->told();
    QMetaObject::invokeMethod(m_answers.get(), &Answers::hurry, Qt::BlockingQueuedConnection);
    for (uint modifiers = 0; modifiers < modifierSets; ++modifiers)
        callController(u"DeregisterKeystrokeListener"_s, modifiers);
    QDBusConnection(accessibilityBus()).unregisterObject(listenerPath);
    m_thread.quit();
    m_thread.wait();
    return m_answers->told();
}
