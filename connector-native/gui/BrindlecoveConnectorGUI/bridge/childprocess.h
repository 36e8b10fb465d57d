#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// What one child process left behind: all bytes of its standard output and standard error in the order in
/// which they were written, or why it could not be started (one line of English).
struct ChildResult
{
    QByteArray output;
    QString launchError;

    [[nodiscard]] bool launched() const { return launchError.isEmpty(); }
};

/// Runs the program at a path to its end, without a shell, and returns what it printed. How the program ended
/// is not looked at. The child gets the path as its argument 0, the arguments as UTF-8, the environment and
/// current directory of this process, /dev/null as standard input, no other descriptors, and default signal
/// handling.
///
/// Blocks the calling thread, without a time limit, until the child has ended and every process that
/// inherited its output has closed it. Nothing is read before the child ends, so a child that prints more
/// than the pipe holds waits for ever. The pipe is as large as the system allows: on Linux 1 MiB unless
/// fs.pipe-max-size says otherwise or the user already holds many pipes, elsewhere the system's default.
/// Writes that leave the pipe's memory pages partly empty (just over half a page each, at worst) halve that.
/// Any thread.
[[nodiscard]] ChildResult runChild(const QByteArray &program, const QStringList &arguments);
