#include "ui/platform/synchronousframe.h"

#include <QCoreApplication>
#include <QQuickWindow>

void renderNow(QQuickWindow *window)
{
    if (window && window->isExposed()) {
        QEvent updateRequest(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(window, &updateRequest);
    }
}
