#include "support/testprogram.h"

#include <QtGui/qguiapplication.h>

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    return TestProgram::run(argc, argv);
}
