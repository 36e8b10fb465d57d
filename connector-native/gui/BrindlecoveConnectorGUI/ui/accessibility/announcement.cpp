#include "ui/accessibility/announcement.h"

#include "ui/accessibility/accessibleitem.h"

#include <QAccessible>
#include <QQuickWindow>

#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)

void announce(QQuickWindow *window, const QString &sentence)
{
    QAccessibleAnnouncementEvent event(window, speakable(sentence));
    QAccessible::updateAccessibility(&event);
}

#else

namespace {

/// A sentence that is announced. It stays for a while, since screen readers ask for its text after the event.
class AccessibleNotification : public QAccessibleObject
{
public:
    AccessibleNotification(QObject *object, QQuickWindow *window, const QString &sentence)
        : QAccessibleObject(object)
        , m_window(window)
        , m_sentence(speakable(sentence))
    {
    }

    [[nodiscard]] QWindow *window() const override { return m_window; }
    [[nodiscard]] QRect rect() const override { return {}; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Notification; }
    [[nodiscard]] QAccessible::State state() const override { return {}; }
    [[nodiscard]] QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_window);
    }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] QAccessibleInterface *child(int) const override { return nullptr; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? m_sentence : QString();
    }
    void setText(QAccessible::Text, const QString &) override { }

private:
    QQuickWindow *m_window;
    QString m_sentence;
};

} // namespace

// Qt 6.4: there is no announcement event. A notification that appears is spoken. Each sentence is an object
// of its own, since a slow reader would otherwise find the next sentence in it.
void announce(QQuickWindow *window, const QString &sentence)
{
    constexpr qsizetype kept = 8;
    const QString name = QStringLiteral("announcement");
    auto *sentenceObject = new QObject(window);
    sentenceObject->setObjectName(name);
    QAccessible::registerAccessibleInterface(new AccessibleNotification(sentenceObject, window, sentence));
    QAccessibleEvent event(QAccessible::queryAccessibleInterface(sentenceObject), QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&event);

    const auto spoken = window->findChildren<QObject *>(name, Qt::FindDirectChildrenOnly);
    if (spoken.size() > kept) {
        delete spoken.constFirst();
    }
}

#endif
