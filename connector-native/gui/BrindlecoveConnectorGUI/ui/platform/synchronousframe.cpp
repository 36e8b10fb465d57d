#include "ui/platform/synchronousframe.h"

#include <QCoreApplication>
#include <QQuickWindow>

// Qt 6.4: a window cannot be asked for a frame at once; this event makes one.
void renderNow(QQuickWindow *window)
{
    if (window && window->isExposed()) {
        QEvent updateRequest(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(window, &updateRequest);
    }
}
