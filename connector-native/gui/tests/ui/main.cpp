#include "support/testprogram.h"
#include "ui/platform/application.h"
#include "ui/platform/qmlmodule.h"

int main(int argc, char *argv[])
{
    const Application application(argc, argv);
    registerQmlModule();
    return TestProgram::run(argc, argv);
}
