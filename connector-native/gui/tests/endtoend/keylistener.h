#pragma once

#include <QString>
#include <QStringList>
#include <QThread>

#include <chrono>
#include <memory>

/// Registers with the accessibility bus for all keys, as a screen reader does: each program asks it about
/// each key before it uses the key. Answers come from a thread of its own, so that they come while the test
/// waits for something else. Main thread only.
class KeyListener
{
public:
    /// Longer than any program waits.
    static constexpr auto never = std::chrono::milliseconds(60000);

    /// Each answer takes that time. The kept key, by its X name, is a command of the listener: the program
    /// must not use it. Failure to register ends the test program.
    explicit KeyListener(std::chrono::milliseconds time, const QString &keptKey = {});
    ~KeyListener();
    Q_DISABLE_COPY_MOVE(KeyListener)

    /// Answers at once what is still asked, and listens no longer. The names and characters of all keys that
    /// it was asked about, in their order.
    QStringList stop();

private:
    class Answers;

    QThread m_thread;
    std::unique_ptr<Answers> m_answers;
};
