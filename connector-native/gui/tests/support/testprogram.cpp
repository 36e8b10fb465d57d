#include "support/testprogram.h"

#include <cstdio>
#include <vector>

std::map<std::string, TestProgram::Maker> &TestProgram::testClasses()
{
    static std::map<std::string, Maker> classes;
    return classes;
}

int TestProgram::run(int argc, char *argv[])
{
    const auto test = testClasses().find(argc > 1 ? argv[1] : "");
    if (test == testClasses().end()) {
        for (const auto &[name, make] : testClasses()) {
            std::puts(name.c_str());
        }
        return EXIT_FAILURE;
    }
    std::vector<char *> arguments(argv, argv + argc);
    arguments.erase(arguments.begin() + 1);
    return QTest::qExec(test->second().get(), static_cast<int>(arguments.size()), arguments.data());
}
