#include "support/testprogram.h"

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    return TestProgram::run(argc, argv);
}
