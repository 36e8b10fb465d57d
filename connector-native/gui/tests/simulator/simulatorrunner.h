#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QList>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

inline const QStringList status = {QStringLiteral("status")};
inline const QStringList loadOkx = {QStringLiteral("load-credentials"), QStringLiteral("okx")};

/// How one run of the simulator ended.
struct SimulatorRun
{
    QByteArray output;
    QByteArray errors;
    QProcess::ExitStatus exitStatus = QProcess::CrashExit;
    int exitCode = -1;
};

/// Runs the simulator again and again with a state directory of its own, which goes with the object.
class SimulatorRunner
{
public:
    SimulatorRunner()
    {
        for (const QString &name : m_environment.keys()) {
            if (name.startsWith(QLatin1StringView("BRINDLECOVE_SIMULATOR_")))
                m_environment.remove(name);
        }
        set("STATE", statePath(QStringLiteral("state")));
    }

    void set(const char *name, const QString &value)
    {
        m_environment.insert(QLatin1StringView("BRINDLECOVE_SIMULATOR_") + QLatin1StringView(name), value);
    }

    [[nodiscard]] SimulatorRun run(const QStringList &arguments) const
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.start(QStringLiteral(SIMULATOR_PROGRAM), arguments, QIODevice::ReadOnly);
        if (!process.waitForFinished())
            return {};
        return {process.readAllStandardOutput(), process.readAllStandardError(), process.exitStatus(),
                process.exitCode()};
    }

    [[nodiscard]] QByteArray output(const QStringList &arguments) const { return run(arguments).output; }

    /// A path below the temporary directory that holds the state directory.
    [[nodiscard]] QString statePath(const QString &name) const { return m_directory.filePath(name); }

    [[nodiscard]] QString filePath(const char *name) const
    {
        return statePath(QStringLiteral("state/") + QLatin1StringView(name));
    }

    [[nodiscard]] bool writeFile(const char *name, const QByteArray &content) const
    {
        QFile file(filePath(name));
        return QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::WriteOnly)
            && file.write(content) == content.size();
    }

    [[nodiscard]] QByteArray readFile(const char *name) const
    {
        QFile file(filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// The recorded calls, oldest first; a line that is no JSON array counts as a call without arguments.
    [[nodiscard]] QList<QStringList> calls() const
    {
        QList<QStringList> calls;
        const QList<QByteArray> lines = readFile("calls.log").split('\n');
        for (const QByteArray &line : lines)
            calls.append(QVariant(QJsonDocument::fromJson(line).array().toVariantList()).toStringList());
        // What follows the last line feed is no call.
        calls.removeLast();
        return calls;
    }

private:
    QTemporaryDir m_directory;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};
