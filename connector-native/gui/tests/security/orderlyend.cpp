// Part of the program only in a build with sanitizers, which look for leaks when a program ends by itself:
// the request to end would otherwise kill it. So each test that has the program ended sees whether it has
// lost anything.

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <unistd.h>

namespace {

std::array<int, 2> ends{};

void passOn(int)
{
    constexpr char request = 0;
    [[maybe_unused]] const ssize_t ignored = write(ends[1], &request, 1);
}

void endInOrder()
{
    if (pipe(ends.data()) != 0) {
        return;
    }
    auto *const requests = new QSocketNotifier(ends[0], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(requests, &QSocketNotifier::activated, [] { QCoreApplication::exit(); });
    static_cast<void>(std::signal(SIGTERM, passOn));
}

} // namespace

// What a library has lost can be told from what this program has only while the library is still there.
extern "C" int dlclose(void * /*library*/) noexcept
{
    return 0;
}

Q_COREAPP_STARTUP_FUNCTION(endInOrder)
