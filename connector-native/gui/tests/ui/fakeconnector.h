#pragma once

#include <QtCore/qobject.h>
#include <QtCore/qstringlist.h>
#include <QtCore/qtemporarydir.h>

/// The connector that lies beside the test programs, as a test steers it: what it answers, and how it was
/// called. A command without an answer prints nothing. There can be one of them in a process. Main thread
/// only.
class FakeConnector : public QObject
{
    Q_OBJECT

public:
    explicit FakeConnector(QObject *parent = nullptr);

    Q_INVOKABLE void answer(const QString &command, const QString &output) const;
    /// The calls since the last reset, oldest first: a command with its arguments, separated by blanks.
    [[nodiscard]] Q_INVOKABLE QStringList calls() const;
    /// No calls, no answers.
    Q_INVOKABLE void reset() const;

private:
    [[nodiscard]] QString path(const QString &name) const { return m_directory.filePath(name); }

    QTemporaryDir m_directory;
};
