#pragma once

#include "bridge/connectorpath.h"

#include <QtCore/qobject.h>
#include <QtCore/qstringlist.h>
#include <QtCore/qtemporarydir.h>

/// A connector as a test steers it: a real child process that prints what the test says, which may change at
/// any moment, and nothing for other commands. Main thread only.
class FakeConnector : public QObject
{
    Q_OBJECT

public:
    explicit FakeConnector(QObject *parent = nullptr);

    /// Makes the one that lies beside the test program, where the window looks for it, do what this one is
    /// told.
    void steerBesideProgram() const;

    [[nodiscard]] QString directory() const { return m_directory.path(); }
    [[nodiscard]] QString program() const;
    /// A place from which only this one is found.
    [[nodiscard]] ProgramPlace place() const;

    Q_INVOKABLE void answer(const QString &command, const QString &text) const;
    void answerBytes(const QString &command, const QByteArray &bytes) const;
    /// Lines of shell instead of a fixed answer.
    void act(const QString &command, const QByteArray &lines) const;

    /// The arguments of each call since the last reset, oldest first.
    [[nodiscard]] QList<QStringList> callArguments() const;
    /// The same, each call as one line.
    [[nodiscard]] Q_INVOKABLE QStringList calls() const;
    /// No calls, no answers.
    Q_INVOKABLE void reset() const;

private:
    void write(const QString &name, const QByteArray &content) const;

    QTemporaryDir m_directory;
};
