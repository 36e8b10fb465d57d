#pragma once

// What the tests of the child process runner share.

#include "bridge/childprocess.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;

using Bytes = QByteArray;

[[nodiscard]] inline std::vector<int> openDescriptors()
{
    constexpr int searched = 1024;
    std::vector<int> found;
    for (int number = 0; number < searched; ++number) {
        if (fcntl(number, F_GETFD) >= 0) {
            found.push_back(number);
        }
    }
    return found;
}

// Neither running children nor ended ones that nobody has waited for.
[[nodiscard]] inline bool noChildren()
{
    return waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD;
}

[[nodiscard]] inline ChildResult probe(const QStringList &words)
{
    return runChild(QFile::encodeName(QCoreApplication::applicationDirPath()) + "/childprobe", words);
}

[[nodiscard]] inline Bytes writtenFile(const QTemporaryDir &directory, const QString &name,
                                       const Bytes &content, QFile::Permissions permissions)
{
    QFile written(directory.filePath(name));
    const bool done = written.open(QIODevice::WriteOnly) && written.write(content) == content.size()
        && written.setPermissions(permissions);
    return done ? QFile::encodeName(written.fileName()) : "not written"_ba;
}

// What the work returns when it is done in a forked copy of this process, whose limits, user and
// descriptors it may spoil.
[[nodiscard]] inline Bytes inFork(const std::function<Bytes()> &work)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        return {};
    }
    const pid_t copy = fork();
    if (copy == 0) {
        const Bytes result = work();
        const bool written = write(ends[1], result.constData(), static_cast<size_t>(result.size())) >= 0;
        _exit(written ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    close(ends[1]);
    QFile reader;
    const bool opened = reader.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    Bytes result = opened ? reader.readAll() : Bytes();
    waitpid(copy, nullptr, 0);
    return result;
}
