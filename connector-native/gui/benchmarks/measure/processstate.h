#pragma once

#include <sys/types.h>

/// What the system knows of a running process. Zero of one that is gone. Linux only.

/// Its memory in KiB, pages shared with other processes counted in proportion.
[[nodiscard]] double proportionalMemory(pid_t process);

/// How often any of its threads has been given a processor so far.
[[nodiscard]] long wakeUps(pid_t process);

/// The processor time it has used so far, in clock ticks.
[[nodiscard]] long processorTicks(pid_t process);
