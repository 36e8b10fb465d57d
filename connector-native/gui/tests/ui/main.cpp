#include "support/testprogram.h"

#include <QtGui/qguiapplication.h>

void qml_register_types_BrindlecoveConnectorGUI();

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    qml_register_types_BrindlecoveConnectorGUI();
    return TestProgram::run(argc, argv);
}
