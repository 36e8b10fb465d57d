#pragma once

#include <QtTest/qtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

/// The tests of one room are one program, so that they are linked once. It runs one of its test classes:
///     bridge_tests tst_statusrules [arguments of Qt Test]
namespace TestProgram {

using Maker = std::function<std::unique_ptr<QObject>()>;

[[nodiscard]] std::map<std::string, Maker> &testClasses();

/// Needs the application object that the room's tests need. Without a known name it prints all of them and
/// fails.
[[nodiscard]] int run(int argc, char *argv[]);

} // namespace TestProgram

/// One at the end of each test source makes its class known under the name of the source.
template <typename Test> struct TestClass
{
    explicit TestClass(const char *name)
    {
        TestProgram::testClasses().emplace(name, [] { return std::make_unique<Test>(); });
    }
};
