#pragma once

#include "accessiblenode.h"

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// A run of the built program in a directory of its own, with the connector beside it that the test puts
/// there. Ends the program when it goes. Main thread only.
class Application
{
public:
    Application();
    ~Application();
    Q_DISABLE_COPY_MOVE(Application)

    /// Puts the simulator beside the program, with the state that earlier runs of it have left.
    [[nodiscard]] bool installSimulator() const;
    /// Puts a connector beside the program that prints these bytes, whatever it is asked.
    [[nodiscard]] bool installPrinter(const QByteArray &output) const;
    [[nodiscard]] bool removeConnector() const;
    [[nodiscard]] QString connectorPath() const;
    /// Where the program lies.
    [[nodiscard]] QString directory() const { return m_directory.path(); }

    /// The lines of the simulator's file of faults; they count from its next call on.
    [[nodiscard]] bool setFaults(const QByteArray &lines) const;
    /// The arguments of each call of the simulator, oldest first.
    [[nodiscard]] QList<QStringList> calls() const;
    /// What a file of the simulator's state holds; empty when there is none.
    [[nodiscard]] QByteArray stateFile(const QString &name) const;

    /// A variable of the program's environment, before it is started.
    void setEnvironment(const QString &name, const QString &value);
    /// A library to be loaded ahead of the program's own, before it is started.
    void preload(const QString &library);
    /// Starts the program.
    [[nodiscard]] bool launch();
    /// Waits until its window is in the accessibility tree.
    [[nodiscard]] bool waitForWindow();
    /// Starts the program and waits for its window.
    [[nodiscard]] bool start();
    /// As start(), by way of lines of bash that have to become the program: its path is their $0, made of
    /// $place and $name.
    [[nodiscard]] bool startBy(const QString &lines);
    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// Waits for the program to end by itself; its exit code, or -1 when it crashed or goes on.
    [[nodiscard]] int waitForEnd();
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    /// Everything the program has printed so far on its two standard streams, but for lines that are answers
    /// to the accessibility bus.
    [[nodiscard]] QByteArray printed();

    /// The root of the accessibility tree; null when the program is not in it.
    [[nodiscard]] AccessibleNode root() const { return m_root; }

private:
    [[nodiscard]] QString path(const QString &name) const { return m_directory.filePath(name); }

    QTemporaryDir m_directory;
    QProcess m_process;
    QByteArray m_printed;
    AccessibleNode m_root;
};
