#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QFile>
#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

/// What the system call tracer wrote down of a program and its children: one line for each call, with the
/// files that descriptors lead to and the whole environment of each started program.
class SystemCalls
{
public:
    /// Lines of bash that become the program in $0 and have its calls written into the file.
    [[nodiscard]] static QString traceInto(const QString &file)
    {
        return QStringLiteral("exec strace -D -f -y -v -s 100000 -o '%1' "
                              "-e trace=%file,%network,write,writev,pwrite64,pwritev,sendfile,splice "
                              "\"$0\"")
            .arg(file);
    }

    /// A trace that is complete only once the first process, the program, has ended.
    explicit SystemCalls(const QString &path)
    {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            m_lines = file.readAll().split('\n');
        m_program = m_lines.value(0).split(' ').first();
    }

    /// Nothing of interest follows the end of the program.
    [[nodiscard]] bool isComplete() const
    {
        return !m_program.isEmpty()
            && !matching(QString::fromLatin1('^' + m_program + R"( +\+\+\+ exited with )")).isEmpty();
    }

    [[nodiscard]] QByteArray lastLine() const { return m_lines.value(m_lines.size() - 2); }

    /// Starts of a program with these first arguments.
    [[nodiscard]] QByteArrayList runs(const QStringList &words) const
    {
        const QString list = QStringLiteral("\"") + words.join(QStringLiteral("\", \""));
        return matching(QStringLiteral(R"(execve\(".*", \[".*", )") + QRegularExpression::escape(list));
    }

    /// Starts of a program with the text in its environment, which follows the arguments.
    [[nodiscard]] QByteArrayList runsWithEnvironmentHolding(const QString &text) const
    {
        return matching(QStringLiteral(R"(execve\(.*\], \[.*)") + text);
    }

    [[nodiscard]] QByteArrayList holding(const QString &text) const { return matching(text); }

    /// Writing the text to anything but a socket.
    [[nodiscard]] QByteArrayList writesOf(const QString &text) const
    {
        return matching(QStringLiteral(R"(^\d+ +p?write(v|v2|64)?\(\d+(?!<socket:).*)") + text);
    }

    [[nodiscard]] QByteArrayList localSockets() const
    {
        return matching(QStringLiteral(R"(socket\(AF_UNIX)"));
    }

    [[nodiscard]] QByteArrayList otherSockets() const
    {
        return matching(QStringLiteral(R"(socket(pair)?\((?!AF_UNIX)|sa_family=AF_(?!UNIX))"));
    }

    [[nodiscard]] QByteArrayList opened() const { return matching(QStringLiteral(R"(^\d+ +open)")); }

    /// But for two that keep nothing: the null device stands in for standard streams, and the filter of core
    /// dumps is a setting of the process itself.
    [[nodiscard]] QByteArrayList openedForWriting() const
    {
        return matching(
            QStringLiteral(R"re(^\d+ +(creat\(|open(?!.*"(/dev/null|/proc/self/coredump_filter)")re"
                           R"re(.*O_(WRONLY|RDWR|CREAT|TMPFILE)))re"));
    }

    /// What made, renamed, removed or altered a file.
    [[nodiscard]] QByteArrayList changes() const
    {
        return matching(
            QStringLiteral(R"(^\d+ +(mkdir|mknod|rename|link|symlink|unlink|rmdir|truncate|chmod|chown|)"
                           R"(fchmod|fchown|lchown|setxattr|utime)\w*\(.*\) = 0)"));
    }

private:
    [[nodiscard]] QByteArrayList matching(const QString &pattern) const
    {
        const QRegularExpression expression(pattern);
        QByteArrayList found;
        for (const QByteArray &line : m_lines) {
            if (expression.match(QString::fromLatin1(line)).hasMatch())
                found.append(line);
        }
        return found;
    }

    QByteArrayList m_lines;
    QByteArray m_program;
};
