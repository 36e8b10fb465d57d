#pragma once

// What this process holds at the moment.

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#ifdef __APPLE__
#include <malloc/malloc.h>
#else
#include <malloc.h>
#endif

struct Resources
{
    int descriptors = 0;
    /// Running children or ended ones that nobody has waited for.
    bool children = false;
    /// Bytes asked for and not given back. Always 0 under a sanitizer, which keeps its own books.
    qint64 heap = 0;
    /// The most that was ever resident, in bytes.
    qint64 peak = 0;
};

[[nodiscard]] inline int countDescriptors()
{
    constexpr int searched = 1024;
    int count = 0;
    for (int number = 0; number < searched; ++number) {
        count += fcntl(number, F_GETFD) >= 0 ? 1 : 0;
    }
    return count;
}

[[nodiscard]] inline bool hasChildren()
{
    return waitpid(-1, nullptr, WNOHANG) != -1 || errno != ECHILD;
}

[[nodiscard]] inline Resources currentResources()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
#ifdef __APPLE__
    const auto heap = static_cast<qint64>(mstats().bytes_used);
    const qint64 peak = usage.ru_maxrss;
#else
    const struct mallinfo2 info = mallinfo2();
    const qint64 heap = static_cast<qint64>(info.uordblks) + static_cast<qint64>(info.hblkhd);
    const qint64 peak = usage.ru_maxrss * 1024;
#endif
    return {countDescriptors(), hasChildren(), heap, peak};
}
