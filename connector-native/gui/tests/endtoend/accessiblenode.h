#pragma once

#include <QList>
#include <QPair>
#include <QRect>
#include <QString>
#include <QStringList>

class QDBusConnection;
class QDBusMessage;
class QDBusPendingCall;

/// One object of a program's accessibility tree, read over the accessibility bus as a screen reader reads it.
/// A handle: every question goes to the program, which may have thrown the object away; then and when the
/// program does not answer, strings and lists are empty and states are not set. Main thread only.
class AccessibleNode
{
public:
    /// Numbers of the accessibility protocol.
    enum class State : unsigned {
        Active = 1,
        Collapsed = 5,
        Editable = 7,
        Enabled = 8,
        Expandable = 9,
        Expanded = 10,
        Focusable = 11,
        Focused = 12,
        Selectable = 22,
        Selected = 23,
        Showing = 25,
        Visible = 30,
        ReadOnly = 43,
    };
    /// Numbers of the accessibility protocol; not all there are.
    enum class Role : unsigned {
        None = 0,
        Frame = 23,
        Label = 29,
        PageTab = 37,
        PasswordText = 40,
        PushButton = 43,
        Text = 61,
        Notification = 101,
    };

    /// What a piece of text reaches to, numbers of the accessibility protocol.
    enum class Boundary : unsigned { Character = 0, Word = 1, Sentence = 3, Line = 5 };

    AccessibleNode() = default;
    AccessibleNode(QString service, QString path);

    /// The tree of the program with this process id; null while it is not on the bus.
    [[nodiscard]] static AccessibleNode ofProcess(qint64 processId);

    [[nodiscard]] bool isNull() const { return m_path.isEmpty(); }
    [[nodiscard]] QString path() const { return m_path; }
    /// Another object of the same program.
    [[nodiscard]] AccessibleNode at(const QString &path) const { return {m_service, path}; }
    [[nodiscard]] QString name() const;
    [[nodiscard]] QString description() const;
    [[nodiscard]] Role role() const;
    [[nodiscard]] QString roleName() const;
    [[nodiscard]] bool is(State state) const;
    /// Where it lies on the screen, in pixels; empty when it lies nowhere.
    [[nodiscard]] QRect extents() const;

    /// The same of each.
    [[nodiscard]] static QStringList names(const QList<AccessibleNode> &nodes);
    [[nodiscard]] static QStringList roleNames(const QList<AccessibleNode> &nodes);
    [[nodiscard]] static QList<QRect> extents(const QList<AccessibleNode> &nodes);

    [[nodiscard]] QStringList actions() const;
    /// False when there is no such action.
    [[nodiscard]] bool act(const QString &action) const;

    /// What a screen reader reads as its text, and how many characters it counts in it.
    [[nodiscard]] QString text() const;
    [[nodiscard]] int characterCount() const;
    /// The piece of the text around a character.
    [[nodiscard]] QString textAt(int offset, Boundary boundary) const;
    /// Where a character lies on the screen, and which one lies at a point of it.
    [[nodiscard]] QRect characterExtents(int offset) const;
    [[nodiscard]] int offsetAt(QPoint point) const;
    /// Where its text cursor is.
    [[nodiscard]] int cursor() const;
    /// What is selected of the text: where it begins and ends.
    [[nodiscard]] QPair<int, int> selection() const;
    /// Where the text begins and ends that looks as the character does.
    [[nodiscard]] QPair<int, int> attributeRun(int offset) const;
    /// Replaces its text, as an assistive technology writes into a field. False when it cannot be written to.
    [[nodiscard]] bool setText(const QString &text) const;
    /// Every text that can be got from it, by whichever question.
    [[nodiscard]] QStringList everythingTold() const;

    [[nodiscard]] QList<AccessibleNode> children() const;
    /// Itself and everything below it, parents first; nothing of a null one.
    [[nodiscard]] QList<AccessibleNode> subtree() const;
    /// Those of the children that are in this state.
    [[nodiscard]] QList<AccessibleNode> childrenIn(State state) const;

private:
    [[nodiscard]] QDBusPendingCall get(const QString &interface, const QString &property) const;
    [[nodiscard]] QDBusPendingCall send(const QString &interface, const QString &method,
                                        const QVariantList &arguments = {}) const;
    [[nodiscard]] QDBusMessage call(const QString &interface, const QString &method,
                                    const QVariantList &arguments = {}) const;
    [[nodiscard]] QVariant property(const QString &interface, const QString &name) const;

    QString m_service;
    QString m_path;
};

/// The bus on which programs and assistive technologies talk. Main thread only.
[[nodiscard]] const QDBusConnection &accessibilityBus();

/// Switches accessibility on for the session, as a desktop does when a screen reader starts. False when there
/// is no accessibility bus.
[[nodiscard]] bool enableAccessibility();
