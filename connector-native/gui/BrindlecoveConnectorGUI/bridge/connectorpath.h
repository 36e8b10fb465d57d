#pragma once

#include <QString>
#include <QStringList>

/// Where the connector's executable is looked for. All paths handed out are absolute. Nothing is remembered
/// between calls, so a connector put in place while the window is open is found by the next run.

enum class Packaging { Bundle, Directory };

/// All that the lookup depends on, apart from the files themselves and the current directory.
struct ProgramPlace
{
    Packaging packaging = Packaging::Directory;
    QString directory; // the bundle (X.app) or the directory of the real program file
    QString argument0; // as given: may be relative, a symbolic link or a bare name
    QString home;
};

/// The place of a program whose real file lies in `programDirectory`.
[[nodiscard]] ProgramPlace programPlace(const QString &programDirectory, const QString &argument0,
                                        const QString &home);

/// The place of the running program. Needs the application object; main thread.
[[nodiscard]] ProgramPlace currentProgramPlace();

/// The candidates in the order in which they are tried; the last one is the fallback. Touches no file.
[[nodiscard]] QStringList connectorCandidates(const ProgramPlace &place);

/// The first candidate that is an executable file, or else the fallback, whether or not it exists.
[[nodiscard]] QString connectorPath(const ProgramPlace &place);
