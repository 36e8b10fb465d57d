#include "bridge/connectorpath.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <iterator>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef __APPLE__
#include <crt_externs.h>
#include <mach-o/dyld.h>
#endif

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView connectorName = "brindlecove-connector";
constexpr QByteArrayView bundlePrograms = "/Contents/MacOS";
constexpr QByteArrayView developmentBuild = ".tidewell/workspace/brindlecove/connector-native/build";

#ifdef __linux__
// Empty where /proc is not mounted.
QByteArray programFile()
{
    std::array<char, PATH_MAX> path{};
    const ssize_t size = readlink("/proc/self/exe", path.data(), path.size());
    return size > 0 ? QByteArray(path.data(), size) : QByteArray();
}

QByteArray givenArgument0()
{
    return program_invocation_name;
}
#else
QByteArray programFile()
{
    std::array<char, PATH_MAX> path{};
    std::array<char, PATH_MAX> real{};
    uint32_t size = path.size();
    const bool found = _NSGetExecutablePath(path.data(), &size) == 0;
    return found && realpath(path.data(), real.data()) != nullptr ? QByteArray(real.data()) : QByteArray();
}

QByteArray givenArgument0()
{
    return (*_NSGetArgv())[0];
}
#endif

// QCoreApplication decodes it to text, which loses bytes that are not UTF-8.
QByteArray directoryOfProgram()
{
    const QByteArray file = programFile();
    return file.isEmpty() ? QFile::encodeName(QCoreApplication::applicationDirPath())
                          : file.first(file.lastIndexOf('/'));
}

// Empty when it has been deleted.
QByteArray currentDirectory()
{
    std::array<char, PATH_MAX> path{};
    return getcwd(path.data(), path.size()) != nullptr ? QByteArray(path.data()) : QByteArray();
}

// A directory carries the executable permission too, but cannot be run.
bool isExecutableFile(const QByteArray &path)
{
    struct stat file
    {
    };
    return stat(path.constData(), &file) == 0 && S_ISREG(file.st_mode) && access(path.constData(), X_OK) == 0;
}

QByteArray inDirectory(const QByteArray &directory, QByteArrayView name)
{
    return directory + (directory.endsWith('/') ? "" : "/") + name.toByteArray();
}

QByteArray besideProgram(const ProgramPlace &place)
{
    return place.packaging == Packaging::Bundle
        ? inDirectory(place.directory + bundlePrograms.toByteArray(), connectorName)
        : inDirectory(place.directory, connectorName);
}

QByteArrayList stepsOf(const QByteArray &path)
{
    QByteArrayList steps = path.split('/');
    steps.removeIf([](const QByteArray &step) { return step.isEmpty() || step == "."; });
    return steps;
}

// ".." stays as it is: behind a symbolic link it does not lead back to the link's own folder.
QByteArray besideArgument0(const QByteArray &argument0)
{
    const QByteArray base = argument0.startsWith('/') ? "/"_ba : currentDirectory();
    if (base.isEmpty()) {
        return {};
    }
    QByteArrayList steps = stepsOf(argument0);
    if (!steps.isEmpty()) {
        steps.removeLast();
    }
    steps = stepsOf(base) + steps;
    steps.append(connectorName.toByteArray());
    return '/' + steps.join('/');
}

QByteArray developmentPath(const QByteArray &home)
{
    const QByteArray absolute = home.startsWith('/') ? home : inDirectory(currentDirectory(), home);
    return inDirectory(inDirectory(absolute, developmentBuild), connectorName);
}

QByteArray currentHome()
{
    QByteArray home = qgetenv("HOME");
    if (!home.isEmpty()) {
        return home;
    }
    const passwd *const user = getpwuid(getuid());
    return user == nullptr ? "/"_ba : QByteArray(user->pw_dir);
}

} // namespace

ProgramPlace programPlace(const QByteArray &programDirectory, const QByteArray &argument0,
                          const QByteArray &home)
{
    const QByteArray bundle =
        programDirectory.chopped(std::min(programDirectory.size(), bundlePrograms.size()));
    if (programDirectory.endsWith(bundlePrograms) && bundle.endsWith(".app")) {
        return {Packaging::Bundle, bundle, argument0, home};
    }
    return {Packaging::Directory, programDirectory, argument0, home};
}

ProgramPlace currentProgramPlace()
{
    return programPlace(directoryOfProgram(), givenArgument0(), currentHome());
}

QByteArrayList connectorCandidates(const ProgramPlace &place)
{
    return {besideProgram(place), besideArgument0(place.argument0), developmentPath(place.home)};
}

QByteArray connectorPath(const ProgramPlace &place)
{
    const QByteArrayList candidates = connectorCandidates(place);
    const auto fallback = std::prev(candidates.cend());
    return *std::find_if(candidates.cbegin(), fallback, isExecutableFile);
}
