#pragma once

// What the kernel tells about other processes.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include <unistd.h>

[[nodiscard]] inline QByteArray processFile(qint64 processId, const QString &name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(processId).arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The fields of its "stat" file from the third on, which is its state: the name before them may hold
/// anything.
[[nodiscard]] inline QList<QByteArray> processState(qint64 processId)
{
    const QByteArray stat = processFile(processId, QStringLiteral("stat"));
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ');
}

/// The processor time that it has taken, in milliseconds.
[[nodiscard]] inline qint64 processorTime(qint64 processId)
{
    constexpr int userTime = 11;
    constexpr int systemTime = 12;
    const QList<QByteArray> state = processState(processId);
    const qint64 ticks = state.value(userTime).toLongLong() + state.value(systemTime).toLongLong();
    return ticks * 1000 / sysconf(_SC_CLK_TCK);
}

/// Whether the process ignores the signal.
[[nodiscard]] inline bool ignores(qint64 processId, int signal)
{
    const QByteArray status = processFile(processId, QStringLiteral("status"));
    const auto at = status.indexOf("SigIgn:");
    const quint64 mask =
        status.mid(at + 7, status.indexOf('\n', at) - at - 7).trimmed().toULongLong(nullptr, 16);
    return at >= 0 && (mask >> (signal - 1) & 1U) != 0;
}

/// What one of its descriptors leads to; empty when it is closed.
[[nodiscard]] inline QString descriptorTarget(qint64 processId, int descriptor)
{
    return QFileInfo(QStringLiteral("/proc/%1/fd/%2").arg(processId).arg(descriptor)).symLinkTarget();
}

/// How many processes have the text in their command line. Zombies have none.
[[nodiscard]] inline int processesNaming(const QString &text)
{
    int count = 0;
    const QStringList numbers =
        QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs);
    for (const QString &number : numbers)
        count += processFile(number.toLongLong(), QStringLiteral("cmdline")).contains(text.toUtf8()) ? 1 : 0;
    return count;
}

/// How many children it has, those included that have ended and that it has not waited for.
[[nodiscard]] inline int childrenOf(qint64 processId)
{
    int count = 0;
    const QStringList numbers =
        QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs);
    for (const QString &number : numbers)
        count += processState(number.toLongLong()).value(1).toLongLong() == processId ? 1 : 0;
    return count;
}
