#include "ui/platform/waitcursor.h"

#include <QCursor>
#include <QGuiApplication>

void WaitCursor::setActive(bool active)
{
    if (m_active == active) {
        return;
    }
    m_active = active;
    if (active) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
    emit activeChanged();
}
