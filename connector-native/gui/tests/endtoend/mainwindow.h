#pragma once

#include "accessiblenode.h"

#include <QColor>
#include <QHash>
#include <QMap>
#include <QRect>
#include <QString>
#include <QStringList>

class Application;

/// One entry of the opened technical log.
struct LogEntry
{
    QString title;
    QString output;
    friend bool operator==(const LogEntry &, const LogEntry &) = default;
};

/// Entries by their distance from the top of the log, in pixels.
using LogEntries = QMap<int, LogEntry>;

/// The program's window in a user's terms: what can be read in it, and controls that are clicked and filled
/// with a real mouse and real keys, scrolled to first where they lie out of sight. What is not laid out
/// counts as not there. Changes have to be awaited. Main thread only.
class MainWindow
{
public:
    explicit MainWindow(const Application &application);

    /// Its rectangle on the screen.
    [[nodiscard]] QRect rect() const { return m_frame.extents(); }
    [[nodiscard]] QString title() const { return m_frame.name(); }
    /// Whether its keys go to it.
    [[nodiscard]] bool isActive() const { return m_frame.is(AccessibleNode::State::Active); }
    /// What the keyboard's focus is on; null when on nothing.
    [[nodiscard]] AccessibleNode focused() const;
    /// The X id.
    [[nodiscard]] QString id() const;

    /// All labels, in reading order.
    [[nodiscard]] QStringList texts() const;
    [[nodiscard]] bool shows(const QString &text) const { return texts().contains(text); }
    /// The texts of the first tile to the last, caption and word each.
    [[nodiscard]] QStringList tiles() const;
    [[nodiscard]] QString tileWord(const QString &caption) const;

    /// A control of this role; null when it is not there.
    [[nodiscard]] AccessibleNode button(const QString &title) const;
    [[nodiscard]] AccessibleNode tab(const QString &title) const;
    [[nodiscard]] AccessibleNode label(const QString &text) const;
    [[nodiscard]] AccessibleNode tokenField() const;
    /// The field that stands below a caption.
    [[nodiscard]] AccessibleNode fieldBelow(const QString &caption) const;
    /// The output box that stands below a heading.
    [[nodiscard]] AccessibleNode outputBelow(const QString &heading) const;
    [[nodiscard]] QStringList tabs() const;
    /// The entries of the open context menu, none when there is no menu; and one by its title.
    [[nodiscard]] QList<AccessibleNode> menu() const;
    [[nodiscard]] AccessibleNode menuEntry(const QString &title) const;

    /// Scrolls until it lies within the window; where it lies then. Empty when it is not there.
    [[nodiscard]] QRect bringIntoView(const AccessibleNode &node) const;
    /// False when it is not there.
    [[nodiscard]] bool click(const AccessibleNode &node) const;
    [[nodiscard]] bool clickButton(const QString &title) const { return click(button(title)); }
    /// Replaces what the field holds by typing.
    [[nodiscard]] bool fill(const AccessibleNode &field, const QString &text) const;
    /// Replaces what the field holds by pasting.
    [[nodiscard]] bool paste(const AccessibleNode &field, const QString &text) const;

    /// It moves with the page, and is in the tree wherever it lies.
    [[nodiscard]] AccessibleNode pageHeading() const;
    /// Whether the page comes to rest.
    [[nodiscard]] bool waitUntilStill() const;

    /// The first entry of the opened log.
    [[nodiscard]] LogEntry newestLogEntry() const;
    /// The opened log from its top to its end, read while scrolling along it.
    [[nodiscard]] QList<LogEntry> log() const;
    [[nodiscard]] QStringList logTitles() const;

    /// How many pixels of the node, once in view, come near the colour.
    [[nodiscard]] int pixelsNear(const AccessibleNode &node, QColor colour) const;

private:
    [[nodiscard]] LogEntries logInView() const;
    [[nodiscard]] QStringList roleNamesOf(const QList<AccessibleNode> &nodes) const;
    /// All objects are children of the frame and have none themselves, as tst_accessibility shows; only the
    /// entries of a context menu are the menu's.
    [[nodiscard]] QList<AccessibleNode> withRole(const QStringList &roleNames) const;
    [[nodiscard]] AccessibleNode find(const QString &roleName, const QString &name) const;
    [[nodiscard]] AccessibleNode textBoxBelow(const QString &caption) const;
    /// False when the page does not go any further.
    [[nodiscard]] bool scroll(bool down, int steps) const;

    AccessibleNode m_frame;
    qint64 m_processId;
    // By path. Objects keep their roles; asking all for them at each look took half of the tests' questions.
    mutable QHash<QString, QString> m_roleNames;
};
