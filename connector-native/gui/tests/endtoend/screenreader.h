#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// Orca, there as long as the object, with a voice that writes down what it says. It must be there before the
/// program it reads. Main thread only.
class ScreenReader
{
public:
    ScreenReader();
    ~ScreenReader();
    Q_DISABLE_COPY_MOVE(ScreenReader)

    /// What it has said since this was last left behind by forget(), utterance by utterance. The bullets of
    /// masked fields are left out, and that something was copied: when much happens at once, it says neither.
    [[nodiscard]] QStringList heard() const;
    void forget();

private:
    [[nodiscard]] QStringList everythingHeard() const;

    QTemporaryDir m_directory;
    QProcess m_process;
    qsizetype m_forgotten = 0;
};
