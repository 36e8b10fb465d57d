#include "accessiblenode.h"

#include <QDebug>
#include <QHash>
#include <QtDBus/qdbusargument.h>
#include <QtDBus/qdbusconnection.h>
#include <QtDBus/qdbusconnectioninterface.h>
#include <QtDBus/qdbusmessage.h>
#include <QtDBus/qdbuspendingcall.h>
#include <QtDBus/qdbusreply.h>

#include <type_traits>

using namespace Qt::StringLiterals;

namespace {

constexpr uint onScreen = 0;

// A program that waits for its child answers late, but it answers.
constexpr int answerTimeout = 20000;

const auto interfacePrefix = u"org.a11y.atspi."_s;

QDBusConnection connectToAccessibilityBus()
{
    const auto question = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                         u"org.a11y.Bus"_s, u"GetAddress"_s);
    const QDBusReply<QString> address = QDBusConnection::sessionBus().call(question);
    return QDBusConnection::connectToBus(address.value(), u"accessibility"_s);
}

QDBusMessage answerTo(QDBusPendingCall call)
{
    call.waitForFinished();
    return call.isError() ? QDBusMessage() : call.reply();
}

QList<AccessibleNode> nodesIn(const QDBusMessage &answer)
{
    QList<AccessibleNode> nodes;
    if (answer.arguments().isEmpty())
        return nodes;
    const auto list = answer.arguments().constFirst().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString service;
        QDBusObjectPath path;
        list.beginStructure();
        list >> service >> path;
        list.endStructure();
        nodes.append({service, path.path()});
    }
    list.endArray();
    return nodes;
}

// What all programs hang from.
AccessibleNode programsOnTheBus()
{
    return {u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s};
}

QVariant firstOf(const QDBusMessage &answer)
{
    return answer.arguments().value(0);
}

QString stringIn(const QDBusMessage &answer)
{
    return firstOf(answer).toString();
}

QVariant propertyIn(const QDBusMessage &answer)
{
    return firstOf(answer).value<QDBusVariant>().variant();
}

QRect rectIn(const QDBusMessage &answer)
{
    const QVariant first = firstOf(answer);
    if (!first.isValid())
        return {};
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const auto rect = first.value<QDBusArgument>();
    rect.beginStructure();
    rect >> x >> y >> width >> height;
    rect.endStructure();
    return {x, y, width, height};
}

bool hasState(AccessibleNode::State state, const QDBusMessage &answer)
{
    constexpr unsigned bits = 32;
    QList<uint> words;
    if (const QVariant first = firstOf(answer); first.isValid())
        first.value<QDBusArgument>() >> words;
    const auto number = static_cast<unsigned>(state);
    return (words.value(number / bits) >> (number % bits) & 1U) != 0;
}

// What is read in each one's answer. All questions are sent before the first answer is awaited: one after the
// other they would take most of the tests' time.
template <typename Ask, typename Read> auto answers(const QList<AccessibleNode> &nodes, Ask ask, Read read)
{
    QList<QDBusPendingCall> calls;
    for (const AccessibleNode &node : nodes)
        calls.append(ask(node));
    QList<std::invoke_result_t<Read, QDBusMessage>> values;
    for (const QDBusPendingCall &call : calls)
        values.append(read(answerTo(call)));
    return values;
}

} // namespace

const QDBusConnection &accessibilityBus()
{
    static const QDBusConnection bus = connectToAccessibilityBus();
    return bus;
}

AccessibleNode::AccessibleNode(QString service, QString path)
    : m_service(std::move(service))
    , m_path(std::move(path))
{
}

AccessibleNode AccessibleNode::ofProcess(qint64 processId)
{
    const QList<AccessibleNode> programs = programsOnTheBus().children();
    for (const AccessibleNode &program : programs) {
        if (accessibilityBus().interface()->servicePid(program.m_service).value() == processId)
            return program;
    }
    return {};
}

QDBusMessage AccessibleNode::call(const QString &interface, const QString &method,
                                  const QVariantList &arguments) const
{
    return isNull() ? QDBusMessage() : answerTo(send(interface, method, arguments));
}

QDBusPendingCall AccessibleNode::send(const QString &interface, const QString &method,
                                      const QVariantList &arguments) const
{
    auto question = QDBusMessage::createMethodCall(m_service, m_path, interfacePrefix + interface, method);
    question.setArguments(arguments);
    return accessibilityBus().asyncCall(question, answerTimeout);
}

QDBusPendingCall AccessibleNode::get(const QString &interface, const QString &property) const
{
    auto question =
        QDBusMessage::createMethodCall(m_service, m_path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question.setArguments({interfacePrefix + interface, property});
    return accessibilityBus().asyncCall(question, answerTimeout);
}

QVariant AccessibleNode::property(const QString &interface, const QString &name) const
{
    return isNull() ? QVariant() : propertyIn(answerTo(get(interface, name)));
}

QString AccessibleNode::name() const
{
    return property(u"Accessible"_s, u"Name"_s).toString();
}

QString AccessibleNode::description() const
{
    return property(u"Accessible"_s, u"Description"_s).toString();
}

AccessibleNode::Role AccessibleNode::role() const
{
    return static_cast<Role>(firstOf(call(u"Accessible"_s, u"GetRole"_s)).toUInt());
}

QString AccessibleNode::roleName() const
{
    return stringIn(call(u"Accessible"_s, u"GetRoleName"_s));
}

bool AccessibleNode::is(State state) const
{
    return hasState(state, call(u"Accessible"_s, u"GetState"_s));
}

QRect AccessibleNode::extents() const
{
    return rectIn(call(u"Component"_s, u"GetExtents"_s, {onScreen}));
}

QStringList AccessibleNode::names(const QList<AccessibleNode> &nodes)
{
    return answers(
        nodes, [](const AccessibleNode &node) { return node.get(u"Accessible"_s, u"Name"_s); },
        [](const QDBusMessage &answer) { return propertyIn(answer).toString(); });
}

QStringList AccessibleNode::roleNames(const QList<AccessibleNode> &nodes)
{
    return answers(
        nodes, [](const AccessibleNode &node) { return node.send(u"Accessible"_s, u"GetRoleName"_s); },
        stringIn);
}

QList<QRect> AccessibleNode::extents(const QList<AccessibleNode> &nodes)
{
    return answers(
        nodes,
        [](const AccessibleNode &node) { return node.send(u"Component"_s, u"GetExtents"_s, {onScreen}); },
        rectIn);
}

QStringList AccessibleNode::actions() const
{
    QStringList names;
    const int count = property(u"Action"_s, u"NActions"_s).toInt();
    for (int action = 0; action < count; ++action)
        names.append(stringIn(call(u"Action"_s, u"GetName"_s, {action})));
    return names;
}

bool AccessibleNode::act(const QString &action) const
{
    const auto index = actions().indexOf(action);
    return index >= 0 && firstOf(call(u"Action"_s, u"DoAction"_s, {static_cast<int>(index)})).toBool();
}

QString AccessibleNode::text() const
{
    return stringIn(call(u"Text"_s, u"GetText"_s, {0, -1}));
}

int AccessibleNode::characterCount() const
{
    return property(u"Text"_s, u"CharacterCount"_s).toInt();
}

QString AccessibleNode::textAt(int offset, Boundary boundary) const
{
    return stringIn(call(u"Text"_s, u"GetTextAtOffset"_s, {offset, static_cast<unsigned>(boundary)}));
}

QRect AccessibleNode::characterExtents(int offset) const
{
    const QVariantList answer = call(u"Text"_s, u"GetCharacterExtents"_s, {offset, onScreen}).arguments();
    return {answer.value(0).toInt(), answer.value(1).toInt(), answer.value(2).toInt(),
            answer.value(3).toInt()};
}

int AccessibleNode::offsetAt(QPoint point) const
{
    return firstOf(call(u"Text"_s, u"GetOffsetAtPoint"_s, {point.x(), point.y(), onScreen})).toInt();
}

int AccessibleNode::cursor() const
{
    return property(u"Text"_s, u"CaretOffset"_s).toInt();
}

QPair<int, int> AccessibleNode::selection() const
{
    const QVariantList answer = call(u"Text"_s, u"GetSelection"_s, {0}).arguments();
    return {answer.value(0).toInt(), answer.value(1).toInt()};
}

QPair<int, int> AccessibleNode::attributeRun(int offset) const
{
    const QVariantList answer = call(u"Text"_s, u"GetAttributeRun"_s, {offset, true}).arguments();
    return {answer.value(1).toInt(), answer.value(2).toInt()};
}

bool AccessibleNode::setText(const QString &text) const
{
    return firstOf(call(u"EditableText"_s, u"SetTextContents"_s, {text})).toBool();
}

QStringList AccessibleNode::everythingTold() const
{
    QStringList told = {name(), description(), property(u"Accessible"_s, u"AccessibleId"_s).toString(),
                        text(), textAt(0, Boundary::Line)};
    const QList<QDBusMessage> answers = {
        call(u"Accessible"_s, u"GetAttributes"_s), call(u"Text"_s, u"GetAttributes"_s, {0}),
        call(u"Text"_s, u"GetDefaultAttributeSet"_s), call(u"Value"_s, u"GetText"_s)};
    for (const QDBusMessage &answer : answers)
        told.append(QDebug::toString(answer.arguments()));
    return told;
}

QList<AccessibleNode> AccessibleNode::children() const
{
    return nodesIn(call(u"Accessible"_s, u"GetChildren"_s));
}

QList<AccessibleNode> AccessibleNode::subtree() const
{
    if (isNull())
        return {};
    QHash<QString, QList<AccessibleNode>> childrenOf;
    QList<AccessibleNode> level = {*this};
    while (!level.isEmpty()) {
        const auto found = answers(
            level, [](const AccessibleNode &node) { return node.send(u"Accessible"_s, u"GetChildren"_s); },
            nodesIn);
        QList<AccessibleNode> next;
        for (qsizetype i = 0; i < level.size(); ++i) {
            childrenOf.insert(level.at(i).m_path, found.at(i));
            next.append(found.at(i));
        }
        level = next;
    }

    QList<AccessibleNode> nodes;
    QList<AccessibleNode> rest = {*this};
    while (!rest.isEmpty()) {
        nodes.append(rest.takeFirst());
        rest = childrenOf.value(nodes.constLast().m_path) + rest;
    }
    return nodes;
}

QList<AccessibleNode> AccessibleNode::childrenIn(State state) const
{
    const QList<AccessibleNode> nodes = children();
    const QList<bool> matches = answers(
        nodes, [](const AccessibleNode &node) { return node.send(u"Accessible"_s, u"GetState"_s); },
        [state](const QDBusMessage &answer) { return hasState(state, answer); });
    QList<AccessibleNode> found;
    for (qsizetype i = 0; i < nodes.size(); ++i) {
        if (matches.at(i))
            found.append(nodes.at(i));
    }
    return found;
}

bool enableAccessibility()
{
    auto request = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                  u"org.freedesktop.DBus.Properties"_s, u"Set"_s);
    request.setArguments({u"org.a11y.Status"_s, u"IsEnabled"_s, QVariant::fromValue(QDBusVariant(true))});
    // A program that starts while the registry is still starting is not listed by it.
    return QDBusConnection::sessionBus().call(request).type() == QDBusMessage::ReplyMessage
        && !programsOnTheBus().roleName().isEmpty();
}
