#include "mainwindow.h"

#include "application.h"
#include "desktop.h"

#include <QTest>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const auto labelRole = u"label"_s;
const auto buttonRole = u"push button"_s;
const auto tabRole = u"page tab"_s;
const auto menuRole = u"popup menu"_s;

const QStringList textBoxRoles = {u"text"_s, u"password text"_s, u"entry"_s};

bool isLaidOut(const AccessibleNode &node)
{
    return !node.extents().isEmpty();
}

AccessibleNode named(const QString &name, const QList<AccessibleNode> &nodes)
{
    const QStringList names = AccessibleNode::names(nodes);
    for (qsizetype i = 0; i < nodes.size(); ++i) {
        if (names.at(i) == name && isLaidOut(nodes.at(i)))
            return nodes.at(i);
    }
    return {};
}

} // namespace

MainWindow::MainWindow(const Application &application)
    : m_frame(application.root().children().value(0))
    , m_processId(application.processId())
{
}

QString MainWindow::id() const
{
    return desktop::windowOf(m_processId);
}

AccessibleNode MainWindow::focused() const
{
    return m_frame.childrenIn(AccessibleNode::State::Focused).value(0);
}

QStringList MainWindow::roleNamesOf(const QList<AccessibleNode> &nodes) const
{
    QList<AccessibleNode> unknown;
    std::ranges::copy_if(nodes, std::back_inserter(unknown),
                         [this](const AccessibleNode &node) { return !m_roleNames.contains(node.path()); });
    const QStringList found = AccessibleNode::roleNames(unknown);
    for (qsizetype i = 0; i < unknown.size(); ++i) {
        if (!found.at(i).isEmpty())
            m_roleNames.insert(unknown.at(i).path(), found.at(i));
    }
    QStringList roleNames;
    for (const AccessibleNode &node : nodes)
        roleNames.append(m_roleNames.value(node.path()));
    return roleNames;
}

QList<AccessibleNode> MainWindow::withRole(const QStringList &roleNames) const
{
    const QList<AccessibleNode> all = m_frame.children();
    const QStringList found = roleNamesOf(all);
    QList<AccessibleNode> wanted;
    for (qsizetype i = 0; i < all.size(); ++i) {
        if (roleNames.contains(found.at(i)))
            wanted.append(all.at(i));
    }
    return wanted;
}

AccessibleNode MainWindow::find(const QString &roleName, const QString &name) const
{
    return named(name, withRole({roleName}));
}

QStringList MainWindow::texts() const
{
    const QList<AccessibleNode> labels = withRole({labelRole});
    const QStringList names = AccessibleNode::names(labels);
    const QList<QRect> places = AccessibleNode::extents(labels);
    QStringList texts;
    for (qsizetype i = 0; i < labels.size(); ++i) {
        if (!places.at(i).isEmpty())
            texts.append(names.at(i));
    }
    return texts;
}

QStringList MainWindow::tiles() const
{
    const QStringList all = texts();
    return all.mid(all.indexOf(u"Connector"_s), 6);
}

QString MainWindow::tileWord(const QString &caption) const
{
    const QStringList all = tiles();
    const auto index = all.indexOf(caption);
    return index < 0 ? QString() : all.value(index + 1);
}

AccessibleNode MainWindow::button(const QString &title) const
{
    return find(buttonRole, title);
}

AccessibleNode MainWindow::tab(const QString &title) const
{
    return find(tabRole, title);
}

AccessibleNode MainWindow::label(const QString &text) const
{
    return find(labelRole, text);
}

AccessibleNode MainWindow::tokenField() const
{
    const QList<AccessibleNode> boxes = withRole(textBoxRoles);
    const auto found = std::ranges::find_if(
        boxes, [](const AccessibleNode &box) { return box.name().startsWith(u"Bind token from "_s); });
    return found == boxes.end() ? AccessibleNode() : *found;
}

AccessibleNode MainWindow::textBoxBelow(const QString &caption) const
{
    const QRect above = label(caption).extents();
    const QList<AccessibleNode> boxes = withRole(textBoxRoles);
    const auto found = std::ranges::find_if(boxes, [&](const AccessibleNode &box) {
        constexpr int gap = 40;
        const QRect place = box.extents();
        const bool isBelow = place.top() > above.bottom() && place.top() - above.bottom() < gap;
        const bool isAligned = qAbs(place.left() - above.left()) < gap;
        return !above.isEmpty() && !place.isEmpty() && isBelow && isAligned;
    });
    return found == boxes.end() ? AccessibleNode() : *found;
}

AccessibleNode MainWindow::fieldBelow(const QString &caption) const
{
    return textBoxBelow(caption);
}

AccessibleNode MainWindow::outputBelow(const QString &heading) const
{
    return textBoxBelow(heading);
}

QStringList MainWindow::tabs() const
{
    return AccessibleNode::names(withRole({tabRole}));
}

QList<AccessibleNode> MainWindow::menu() const
{
    QList<AccessibleNode> entries;
    const QList<AccessibleNode> menus = withRole({menuRole});
    for (const AccessibleNode &menu : menus)
        entries += menu.children();
    return entries;
}

AccessibleNode MainWindow::menuEntry(const QString &title) const
{
    return named(title, menu());
}

bool MainWindow::scroll(bool down, int steps) const
{
    constexpr int patience = 300;
    const AccessibleNode heading = pageHeading();
    const int before = heading.extents().top();
    const QRect window = rect();
    const QPoint margin(window.left() + 8, window.center().y());
    desktop::turnWheel(margin, down ? desktop::Wheel::Down : desktop::Wheel::Up, steps);
    if (!QTest::qWaitFor([&] { return heading.extents().top() != before; }, patience))
        return false;
    return waitUntilStill();
}

bool MainWindow::waitUntilStill() const
{
    const AccessibleNode heading = pageHeading();
    std::optional<int> last;
    return QTest::qWaitFor([&] {
        const int now = heading.extents().top();
        return std::exchange(last, now) == now;
    });
}

AccessibleNode MainWindow::pageHeading() const
{
    return m_frame.children().value(0);
}

QRect MainWindow::bringIntoView(const AccessibleNode &node) const
{
    constexpr int attempts = 200;
    for (int attempt = 0; attempt < attempts && isLaidOut(node); ++attempt) {
        const QRect place = node.extents();
        const QRect window = rect();
        const bool isBelow = place.bottom() > window.bottom() && place.top() > window.top();
        const bool isAbove = place.top() < window.top();
        if ((!isBelow && !isAbove) || !scroll(isBelow, 1))
            return place;
    }
    return node.extents();
}

bool MainWindow::click(const AccessibleNode &node) const
{
    const QRect place = node.isNull() ? QRect() : bringIntoView(node);
    if (place.isEmpty())
        return false;
    desktop::clickAt(place.center());
    return true;
}

bool MainWindow::fill(const AccessibleNode &field, const QString &text) const
{
    if (!click(field))
        return false;
    desktop::press(u"ctrl+a"_s);
    desktop::press(u"BackSpace"_s);
    desktop::type(text);
    return true;
}

bool MainWindow::paste(const AccessibleNode &field, const QString &text) const
{
    if (!click(field))
        return false;
    desktop::setClipboard(text);
    desktop::press(u"ctrl+a"_s);
    desktop::press(u"ctrl+v"_s);
    return true;
}

LogEntries MainWindow::logInView() const
{
    // An entry's distance from the button above tells it apart. That of one out of view, of which the first
    // and the last exist as well, is a guess until all between have been seen.
    const int top = button(u"Hide technical log"_s).extents().bottom();
    const QRect view = rect();
    LogEntries entries;
    const QList<AccessibleNode> all = m_frame.children();
    const QStringList roleNames = roleNamesOf(all);
    const QList<QRect> places = AccessibleNode::extents(all);
    for (qsizetype i = 0; i < all.size(); ++i) {
        const AccessibleNode &node = all.at(i);
        const int distance = places.at(i).top() - top;
        if (distance <= 0 || !places.at(i).intersects(view))
            continue;
        if (roleNames.at(i) == labelRole) {
            entries.insert(distance, {node.name(), QString()});
        } else if (textBoxRoles.contains(roleNames.at(i)) && !entries.isEmpty()) {
            std::prev(entries.upperBound(distance))->output = node.text();
        }
    }
    return entries;
}

LogEntry MainWindow::newestLogEntry() const
{
    static_cast<void>(bringIntoView(button(u"Hide technical log"_s)));
    static_cast<void>(scroll(true, 1));
    const LogEntries entries = logInView();
    return entries.isEmpty() ? LogEntry() : entries.first();
}

QList<LogEntry> MainWindow::log() const
{
    LogEntries entries;
    static_cast<void>(bringIntoView(button(u"Hide technical log"_s)));
    do {
        entries.insert(logInView());
    } while (scroll(true, 3));
    return entries.values();
}

QStringList MainWindow::logTitles() const
{
    QStringList titles;
    const QList<LogEntry> entries = log();
    for (const LogEntry &entry : entries)
        titles.append(entry.title);
    return titles;
}

int MainWindow::pixelsNear(const AccessibleNode &node, QColor colour) const
{
    return desktop::pixelsNear(bringIntoView(node), colour);
}
