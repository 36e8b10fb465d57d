#include "bridge/connectorpath.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto connectorName = "brindlecove-connector"_L1;
constexpr auto bundlePrograms = "/Contents/MacOS"_L1;
constexpr auto developmentBuild = ".tidewell/workspace/brindlecove/connector-native/build"_L1;

// A directory carries the executable permission too, but cannot be run.
bool isExecutableFile(const QString &path)
{
    const QFileInfo file(path);
    return file.isFile() && file.isExecutable();
}

QString inDirectory(const QString &directory, QLatin1StringView name)
{
    return QDir(directory).absoluteFilePath(name);
}

QString besideProgram(const ProgramPlace &place)
{
    if (place.packaging == Packaging::Bundle) {
        return inDirectory(place.directory + bundlePrograms, connectorName);
    }
    return inDirectory(place.directory, connectorName);
}

QStringList currentDirectorySteps()
{
    return QDir::currentPath().split(u'/', Qt::SkipEmptyParts);
}

// ".." stays as it is: behind a symbolic link it does not lead back to where the link lies, which
// QFileInfo's absolute paths assume.
QString besideArgument0(const QString &argument0)
{
    QStringList steps = argument0.split(u'/', Qt::SkipEmptyParts);
    steps.removeAll(u"."_s);
    if (!steps.isEmpty()) {
        steps.removeLast();
    }
    if (!argument0.startsWith(u'/')) {
        steps = currentDirectorySteps() + steps;
    }
    steps.append(connectorName);
    return u'/' + steps.join(u'/');
}

QString developmentPath(const QString &home)
{
    return inDirectory(inDirectory(home, developmentBuild), connectorName);
}

// Without HOME, Qt takes the root directory for the user's home.
QString currentHome()
{
    if (!qEnvironmentVariableIsEmpty("HOME")) {
        return QDir::homePath();
    }
    const passwd *const user = getpwuid(getuid());
    return user == nullptr ? QDir::homePath() : QFile::decodeName(user->pw_dir);
}

} // namespace

ProgramPlace programPlace(const QString &programDirectory, const QString &argument0, const QString &home)
{
    const QString bundle = programDirectory.chopped(std::min(programDirectory.size(), bundlePrograms.size()));
    if (programDirectory.endsWith(bundlePrograms) && bundle.endsWith(".app"_L1)) {
        return {Packaging::Bundle, bundle, argument0, home};
    }
    return {Packaging::Directory, programDirectory, argument0, home};
}

ProgramPlace currentProgramPlace()
{
    return programPlace(QCoreApplication::applicationDirPath(), QCoreApplication::arguments().constFirst(),
                        currentHome());
}

QStringList connectorCandidates(const ProgramPlace &place)
{
    return {besideProgram(place), besideArgument0(place.argument0), developmentPath(place.home)};
}

QString connectorPath(const ProgramPlace &place)
{
    const QStringList candidates = connectorCandidates(place);
    const auto fallback = std::prev(candidates.cend());
    return *std::find_if(candidates.cbegin(), fallback, isExecutableFile);
}
