#include "ui/accessibility/secretguard.h"

#include <QCoreApplication>
#include <QInputMethodQueryEvent>

bool SecretGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::InputMethodQuery) {
        answer(watched, static_cast<QInputMethodQueryEvent *>(event));
        return true;
    }
    return ItemFilter::eventFilter(watched, event);
}

// The input answers the query; then what shows its text is masked.
void SecretGuard::answer(QObject *input, QInputMethodQueryEvent *query)
{
    input->removeEventFilter(this);
    QCoreApplication::sendEvent(input, query);
    input->installEventFilter(this);

    for (const Qt::InputMethodQuery text :
         {Qt::ImSurroundingText, Qt::ImCurrentSelection, Qt::ImTextBeforeCursor, Qt::ImTextAfterCursor}) {
        if (query->queries() & text) {
            query->setValue(text, QString(query->value(text).toString().size(), u'•'));
        }
    }
}
