#pragma once

#include <string>
#include <sys/types.h>

/// A running program, ended and waited for when this goes.
class Program
{
public:
    /// Starts it. Ends this one when that fails.
    explicit Program(const std::string &path);
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;
    ~Program();

    [[nodiscard]] pid_t process() const { return m_process; }
    /// Blocks until it has used no processor time for a while.
    void waitUntilSettled() const;

private:
    pid_t m_process = 0;
};
