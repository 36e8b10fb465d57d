#pragma once

#include <QByteArray>
#include <QByteArrayList>

/// Where the connector's executable is looked for. Nothing is remembered between calls, so a connector put in
/// place while the window is open is found by the next run. Paths are bytes, as file systems have them: a
/// folder's name need not be UTF-8.

enum class Packaging { Bundle, Directory };

/// All that the lookup depends on, apart from the files themselves and the current directory.
struct ProgramPlace
{
    Packaging packaging = Packaging::Directory;
    QByteArray directory; // the bundle (X.app) or the directory of the real program file
    QByteArray argument0; // as given: may be relative, a symbolic link or a bare name
    QByteArray home;
};

/// The place of a program whose real file lies in `programDirectory`.
[[nodiscard]] ProgramPlace programPlace(const QByteArray &programDirectory, const QByteArray &argument0,
                                        const QByteArray &home);

/// The place of the running program. Needs the application object; main thread.
[[nodiscard]] ProgramPlace currentProgramPlace();

/// The candidates in the order in which they are tried; the last one is the fallback. All are absolute, but
/// in a current directory that has been deleted a relative argument 0 gives an empty one. Touches no file.
[[nodiscard]] QByteArrayList connectorCandidates(const ProgramPlace &place);

/// The first candidate that is an executable file, or else the fallback, whether or not it exists.
[[nodiscard]] QByteArray connectorPath(const ProgramPlace &place);
