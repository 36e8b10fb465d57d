#include "measure/figure.h"
#include "measure/processstate.h"
#include "outside/program.h"
#include "outside/watchedplace.h"

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

namespace {

constexpr int rounds = 25;
constexpr std::chrono::seconds idleTime(10);

// From before the process exists until its window is on the screen, which its first frame holds whole, then
// its memory at rest.
struct Start
{
    Samples window;
    Samples memory;

    void measure(const WatchedPlace &place, const std::string &path)
    {
        const unsigned long bare = place.pixel();
        {
            const auto start = std::chrono::steady_clock::now();
            const Program program(path);
            place.waitForOtherThan(bare);
            window.add(
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
            program.waitUntilSettled();
            memory.add(proportionalMemory(program.process()) / 1024);
        }
        place.waitFor(bare);
    }
};

void reportAgainst(const std::string &name, const std::string &unit, const Samples &own,
                   const Samples &reference, double limit)
{
    Figure figure = figureOf(name, unit, own, atMostTimes(limit));
    figure.reference = reference.median();
    report(figure);
}

double wakeUpsPerSecond(const WatchedPlace &place, const std::string &path)
{
    const unsigned long bare = place.pixel();
    const Program program(path);
    place.waitForOtherThan(bare);
    program.waitUntilSettled();
    const long before = wakeUps(program.process());
    std::this_thread::sleep_for(idleTime);
    return static_cast<double>(wakeUps(program.process()) - before) / static_cast<double>(idleTime.count());
}

} // namespace

// bench_start PROGRAM BARE_PROGRAM: both are taken in turn, so that what else the machine does hits both.
int main(int argc, char *argv[])
{
    if (argc != 3) {
        return EXIT_FAILURE;
    }
    const WatchedPlace place;
    Start warmUp;
    Start own;
    Start bare;
    warmUp.measure(place, argv[1]);
    warmUp.measure(place, argv[2]);
    for (int round = 0; round < rounds; ++round) {
        own.measure(place, argv[1]);
        bare.measure(place, argv[2]);
    }
    reportAgainst("process start to the whole window", "ms", own.window, bare.window, 1.30);
    reportAgainst("memory (PSS) after start-up", "MiB", own.memory, bare.memory, 1.15);
    Figure idle{
        "idle window: wake-ups per second", "/s", wakeUpsPerSecond(place, argv[1]), {}, {}, atMost(0)};
    report(idle);
    return EXIT_SUCCESS;
}
