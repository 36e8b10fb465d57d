#pragma once

#include <mutex>

/// Keeps what this process has in memory, and with it whatever was typed, out of its core dumps: they still
/// say where each thread was and what was mapped, but not what was there. Where the system has no filter for
/// that, or refuses to set it, nothing happens. Call it once, before there are other threads.
void keepMemoryOutOfCoreDumps();

/// While it lives, core dumps hold again what they held before the function above was called. A program that
/// is started meanwhile inherits that, and no trace of what this one asked for itself. Any thread; each waits
/// for the others.
class InheritedCoreDumps
{
public:
    InheritedCoreDumps();
    ~InheritedCoreDumps();
    InheritedCoreDumps(const InheritedCoreDumps &) = delete;
    InheritedCoreDumps &operator=(const InheritedCoreDumps &) = delete;

private:
    std::unique_lock<std::mutex> m_turn;
};
