#include "ui/platform/renderer.h"

#include <QQuickWindow>

// The window has few animations: the software renderer starts faster, takes a fraction of the memory and
// needs no graphics driver.
void chooseRenderer()
{
    const bool chosenByUser =
        qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND");
    if (!chosenByUser) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
}
