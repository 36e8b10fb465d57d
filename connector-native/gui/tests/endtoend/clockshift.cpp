// Loaded into a program ahead of its libraries, this sets the wall clock that all of them see: by as many
// seconds as the file says that CLOCK_SHIFT_FILE names, which may change at any time. Clocks that nobody can
// set run on.

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

using Seconds = std::int64_t;

const volatile Seconds *mappedShift()
{
    static constexpr Seconds none = 0;
    const char *const path = std::getenv("CLOCK_SHIFT_FILE");
    const int file = path == nullptr ? -1 : open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return &none;
    }
    void *const place = mmap(nullptr, sizeof(Seconds), PROT_READ, MAP_SHARED, file, 0);
    close(file);
    return place == MAP_FAILED ? &none : static_cast<const Seconds *>(place);
}

Seconds shift()
{
    static const volatile Seconds *const mapped = mappedShift();
    return *mapped;
}

bool canBeSet(clockid_t clock)
{
    return clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE || clock == CLOCK_TAI;
}

timespec wallClock()
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return now;
}

} // namespace

extern "C" int clock_gettime(clockid_t clock_id, timespec *tp) noexcept
{
    const long result = syscall(SYS_clock_gettime, clock_id, tp);
    if (result == 0 && canBeSet(clock_id)) {
        tp->tv_sec += shift();
    }
    return static_cast<int>(result);
}

extern "C" int gettimeofday(timeval *tv, void * /*tz*/) noexcept
{
    const timespec now = wallClock();
    *tv = {now.tv_sec, now.tv_nsec / 1000};
    return 0;
}

extern "C" time_t time(time_t *timer) noexcept
{
    const timespec now = wallClock();
    if (timer != nullptr) {
        *timer = now.tv_sec;
    }
    return now.tv_sec;
}
