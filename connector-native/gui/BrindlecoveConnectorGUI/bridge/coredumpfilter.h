#pragma once

#include <mutex>

/// Keeps the memory of this process, and with it whatever was typed, out of its core dumps: they still hold
/// each thread's registers and the list of mappings. Where the system has no filter for that, or refuses to
/// set it, nothing happens. Call it once, before there are other threads.
void keepMemoryOutOfCoreDumps();

/// Restores the original filter while it lives, so that a child process started meanwhile inherits that one.
/// Any thread; each waits for the others.
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
