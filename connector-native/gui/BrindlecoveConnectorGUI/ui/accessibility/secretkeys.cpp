#include "ui/accessibility/secretkeys.h"

#include <QGuiApplication>
#include <QKeyEvent>

namespace {

bool isScreenReaderModifier(int key)
{
    return key == Qt::Key_Insert || key == Qt::Key_CapsLock;
}

// Whether a character is typed as a capital is a part of the secret as well.
bool choosesCharacter(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_AltGr || key == Qt::Key_Mode_switch;
}

} // namespace

void SecretKeys::cover()
{
    qGuiApp->installEventFilter(this);
}

void SecretKeys::uncover()
{
    qGuiApp->removeEventFilter(this);
    m_isCommand = false;
}

bool SecretKeys::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (!isKey || !event->spontaneous()) {
        return false;
    }
    const auto &key = *static_cast<QKeyEvent *>(event);
    if (isScreenReaderModifier(key.key())) {
        m_isCommand = event->type() == QEvent::KeyPress;
    }
    if (!isCovered(key)) {
        return false;
    }
    // Sent from within the program, an event is of no interest to Qt's filter, nor to this one.
    QCoreApplication::sendEvent(watched, event);
    return true;
}

bool SecretKeys::isCovered(const QKeyEvent &event) const
{
    const bool types = !event.text().isEmpty() && event.text().front().isPrint();
    return !m_isCommand && (types || choosesCharacter(event.key()));
}
