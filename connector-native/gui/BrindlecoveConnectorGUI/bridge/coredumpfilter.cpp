#include "bridge/coredumpfilter.h"

#ifdef __linux__

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace {

// ELF headers: a debugger identifies programs and libraries by them.
constexpr unsigned long onlyElfHeaders = 0x10;

// The filter is one per process.
class Filter
{
public:
    // Never closed: when a child is started, there may be no free descriptor to open it again.
    Filter()
        : m_file(open("/proc/self/coredump_filter", O_RDWR | O_CLOEXEC))
    {
        std::array<char, 16> text{};
        if (m_file >= 0 && read(m_file, text.data(), text.size() - 1) > 0) {
            m_inherited = std::strtoul(text.data(), nullptr, 16);
        }
    }

    void narrow() const { set(m_inherited & onlyElfHeaders); }
    void putBack() const { set(m_inherited); }

private:
    // Errors are ignored: a start must not fail because of how a crash would be recorded.
    void set(unsigned long filter) const
    {
        std::array<char, 24> text{};
        const int length = std::snprintf(text.data(), text.size(), "%#lx", filter);
        [[maybe_unused]] const ssize_t ignored =
            pwrite(m_file, text.data(), static_cast<std::size_t>(length), 0);
    }

    int m_file;
    unsigned long m_inherited = 0;
};

std::mutex turns;
const Filter *narrowed = nullptr;

} // namespace

void keepMemoryOutOfCoreDumps()
{
    static const Filter filter;
    filter.narrow();
    narrowed = &filter;
}

InheritedCoreDumps::InheritedCoreDumps()
    : m_turn(turns)
{
    if (narrowed != nullptr) {
        narrowed->putBack();
    }
}

InheritedCoreDumps::~InheritedCoreDumps()
{
    if (narrowed != nullptr) {
        narrowed->narrow();
    }
}

#else

// Elsewhere a core dump cannot be filtered; macOS writes none unless its user asks for them.
void keepMemoryOutOfCoreDumps() { }

InheritedCoreDumps::InheritedCoreDumps() = default;
InheritedCoreDumps::~InheritedCoreDumps() = default;

#endif
