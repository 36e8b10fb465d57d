#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

/// A cancellable task that repeats a round on its thread's event loop: the first as soon as the loop is
/// reached, each next one a pause after the last has returned. What the user did meanwhile, closing the
/// window above all, comes before a round that is due. Rounds never overlap anything else on the thread. The
/// task deletes itself once it has been cancelled; a round that cancels its own task still finishes.
class StatusPollTask : public QObject
{
    Q_OBJECT

public:
    StatusPollTask(std::chrono::milliseconds pause, std::function<void()> round, QObject *parent);

    void cancel();

private:
    void yieldToUser();
    void runRound();

    std::chrono::milliseconds m_pause;
    std::function<void()> m_round;
    QTimer m_timer;
    bool m_cancelled = false;
};
