#include "support/testprogram.h"
#include "ui/platform/application.h"

void qml_register_types_BrindlecoveConnectorGUI();

int main(int argc, char *argv[])
{
    const Application application(argc, argv);
    qml_register_types_BrindlecoveConnectorGUI();
    return TestProgram::run(argc, argv);
}
