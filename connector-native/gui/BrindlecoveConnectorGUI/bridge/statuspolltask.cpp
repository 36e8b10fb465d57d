#include "bridge/statuspolltask.h"

#include <utility>

StatusPollTask::StatusPollTask(std::chrono::milliseconds pause, std::function<void()> round, QObject *parent)
    : QObject(parent)
    , m_pause(pause)
    , m_round(std::move(round))
{
    // A coarse timer may be five percent off, and both kinds run on the monotonic clock.
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setSingleShot(true);
    m_timer.callOnTimeout(this, &StatusPollTask::yieldToUser);
    m_timer.start(std::chrono::milliseconds::zero());
}

void StatusPollTask::cancel()
{
    m_cancelled = true;
    deleteLater();
}

// Some event dispatchers run timers before they read the window system's events; one more turn of the loop
// gives those precedence.
void StatusPollTask::yieldToUser()
{
    QTimer::singleShot(0, this, &StatusPollTask::runRound);
}

void StatusPollTask::runRound()
{
    if (m_cancelled) {
        return;
    }
    m_round();
    // Without effect if the round has cancelled the task.
    m_timer.start(m_pause);
}
