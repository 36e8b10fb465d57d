#include "accessibilityevents.h"

#include "accessiblenode.h"

#include <QtDBus/qdbusargument.h>
#include <QtDBus/qdbusconnection.h>
#include <QtDBus/qdbusmessage.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QStringList eventClasses = {u"Object"_s, u"Window"_s, u"Focus"_s};

void callRegistry(const QString &method)
{
    for (const QString &eventClass : eventClasses) {
        auto request =
            QDBusMessage::createMethodCall(u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/registry"_s,
                                           u"org.a11y.atspi.Registry"_s, method);
        request << eventClass.toLower() + u':';
        accessibilityBus().call(request);
    }
}

} // namespace

AccessibilityEvents::AccessibilityEvents()
{
    for (const QString &eventClass : eventClasses) {
        QDBusConnection(accessibilityBus())
            .connect(QString(), QString(), u"org.a11y.atspi.Event."_s + eventClass, QString(), this,
                     SLOT(record(QDBusMessage)));
    }
    callRegistry(u"RegisterEvent"_s);
}

AccessibilityEvents::~AccessibilityEvents()
{
    callRegistry(u"DeregisterEvent"_s);
}

QStringList AccessibilityEvents::texts(const QString &path, const QString &kind) const
{
    QStringList texts;
    for (const AccessibilityEvent &event : m_events) {
        if (event.path == path && event.kind == kind)
            texts.append(event.text);
    }
    return texts;
}

bool AccessibilityEvents::lastShowing(const QString &path, bool on) const
{
    const auto isAboutIt = [&](const AccessibilityEvent &event) {
        return event.path == path && event.kind == u"StateChanged:showing"_s;
    };
    const auto last = std::find_if(m_events.crbegin(), m_events.crend(), isAboutIt);
    return last != m_events.crend() && last->on == on;
}

QStringList AccessibilityEvents::spoken(const AccessibleNode &program) const
{
    QStringList sentences;
    for (const AccessibilityEvent &event : m_events) {
        if (event.kind.startsWith(u"Announcement:"_s)) {
            sentences.append(event.text);
        } else if (event.kind == u"StateChanged:showing"_s && hasAppeared(event.path)) {
            const AccessibleNode source = program.at(event.path);
            if (source.role() == AccessibleNode::Role::Notification) {
                sentences.append(source.name());
            }
        }
    }
    return sentences;
}

void AccessibilityEvents::record(const QDBusMessage &message)
{
    const QVariant data = message.arguments().value(3).value<QDBusVariant>().variant();
    m_events.append({message.path(), message.member() + u':' + message.arguments().value(0).toString(),
                     message.arguments().value(1).toInt() != 0, data.toString()});
}

#include "moc_accessibilityevents.cpp"
