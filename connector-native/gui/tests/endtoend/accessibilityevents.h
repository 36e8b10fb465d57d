#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

class AccessibleNode;
class QDBusMessage;

/// One thing that a program has told assistive technologies unasked.
struct AccessibilityEvent
{
    QString path; ///< Of the object it is about.
    QString kind; ///< As in "PropertyChange:accessible-name".
    bool on = false; ///< For a changed state: whether it holds now.
    QString text; ///< What comes with it, empty when that is no text.
};

/// Listens to all events on the accessibility bus, as a screen reader does, as long as it is there. Programs
/// send none while nobody listens, so it must be there before what is expected to be heard happens. Events
/// come in while the test waits. Main thread only.
class AccessibilityEvents : public QObject
{
    Q_OBJECT

public:
    AccessibilityEvents();
    ~AccessibilityEvents() override;
    Q_DISABLE_COPY_MOVE(AccessibilityEvents)

    [[nodiscard]] const QList<AccessibilityEvent> &all() const { return m_events; }
    [[nodiscard]] bool has(const QString &path, const QString &kind) const
    {
        return !texts(path, kind).isEmpty();
    }
    /// What came with each such event of the object, oldest first.
    [[nodiscard]] QStringList texts(const QString &path, const QString &kind) const;
    /// The last that was said of the object is that it appeared, or that it went.
    [[nodiscard]] bool hasAppeared(const QString &path) const { return lastShowing(path, true); }
    [[nodiscard]] bool hasGone(const QString &path) const { return lastShowing(path, false); }
    /// What the program has had spoken by itself, sentence by sentence: as announcements where Qt has them,
    /// else as notifications that appear.
    [[nodiscard]] QStringList spoken(const AccessibleNode &program) const;
    void clear() { m_events.clear(); }

private slots:
    void record(const QDBusMessage &message);

private:
    [[nodiscard]] bool lastShowing(const QString &path, bool on) const;

    QList<AccessibilityEvent> m_events;
};
