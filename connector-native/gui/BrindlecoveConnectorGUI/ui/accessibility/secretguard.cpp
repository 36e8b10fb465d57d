#include "ui/accessibility/secretguard.h"

#include "ui/accessibility/accessibletext.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QInputMethodQueryEvent>

#include <utility>

void SecretGuard::setInput(QQuickItem *input)
{
    if (m_input == input) {
        return;
    }
    if (m_input) {
        m_input->removeEventFilter(this);
        m_input->disconnect(this);
    }
    m_input = input;
    if (m_input) {
        m_input->installEventFilter(this);
        // The class of text inputs is not public, so their signal is known by its name only.
        connect(m_input, SIGNAL(textChanged()), this, SLOT(announceChange()));
        m_announced = bulletsOf(*m_input);
    }
    emit inputChanged();
}

bool SecretGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::InputMethodQuery) {
        return QObject::eventFilter(watched, event);
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
    const QString before = std::exchange(m_announced, bulletsOf(*m_input));
    QAccessibleTextUpdateEvent event(m_input, 0, before, m_announced);
    QAccessible::updateAccessibility(&event);
}
