#pragma once

#include <QtCore/qglobal.h>

#include <ctime>

/// The processor time that this process has taken since the timer was created. Unlike the time of the clock
/// it hardly grows when the machine is busy with something else, so a limit can be a tight one.
class ProcessorTimer
{
public:
    /// In milliseconds.
    [[nodiscard]] qint64 elapsed() const { return qint64(std::clock() - m_start) * 1000 / CLOCKS_PER_SEC; }

private:
    std::clock_t m_start = std::clock();
};
