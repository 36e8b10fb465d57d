#include "ui/accessibility/secretguard.h"

#include "ui/accessibility/accessibletext.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QInputMethodQueryEvent>

#include <utility>

SecretGuard::SecretGuard(QObject *parent)
    : ItemFilter(parent)
{
    connect(this, &ItemFilter::itemChanged, this, &SecretGuard::watchText);
}

void SecretGuard::watchText()
{
    if (item()) {
        // The class of text inputs is not public, so their signal is known by its name only.
        connect(item(), SIGNAL(textChanged()), this, SLOT(announceChange()));
        m_announced = bulletsOf(*item());
    }
}

bool SecretGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::InputMethodQuery) {
        return ItemFilter::eventFilter(watched, event);
    }
    // Let the input answer all that is asked, then cover what shows its text.
    watched->removeEventFilter(this);
    QCoreApplication::sendEvent(watched, event);
    watched->installEventFilter(this);

    auto *query = static_cast<QInputMethodQueryEvent *>(event);
    for (const Qt::InputMethodQuery text :
         {Qt::ImSurroundingText, Qt::ImCurrentSelection, Qt::ImTextBeforeCursor, Qt::ImTextAfterCursor}) {
        if (query->queries() & text) {
            query->setValue(text, QString(query->value(text).toString().size(), u'•'));
        }
    }
    return true;
}

void SecretGuard::announceChange()
{
    const QString before = std::exchange(m_announced, bulletsOf(*item()));
    QAccessibleTextUpdateEvent event(item(), 0, before, m_announced);
    QAccessible::updateAccessibility(&event);
}
