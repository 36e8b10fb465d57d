#include "inside/benchwindow.h"

#include "bridge/utf8.h"
#include "measure/figure.h"
#include "measure/processstate.h"

#include <malloc.h>
#include <unistd.h>

#include <cstdlib>

namespace {

constexpr int entries = 1'000'000;
constexpr int stretch = 100'000;
constexpr int lineLength = 50;
constexpr int lines = 2;

double bytesInUse()
{
    malloc_trim(0);
    return proportionalMemory(getpid()) * 1024;
}

double microsecondsPerEntry(BenchWindow &bench)
{
    const double taken = milliseconds([&] {
        for (int entry = 0; entry < stretch; ++entry) {
            addEntry(bench.viewModel(), linesOf(lineLength, lines));
        }
    });
    bench.frame();
    return taken * 1000 / stretch;
}

} // namespace

// Very many entries come into the log while it is collapsed.
int main(int argc, char *argv[])
{
    BenchWindow bench(argc, argv);
    const double before = bytesInUse();
    Samples earlier;
    Samples later;
    for (int entry = 0; entry < entries; entry += stretch) {
        (entry < entries / 2 ? earlier : later).add(microsecondsPerEntry(bench));
    }
    constexpr double text = double(sizeof(QChar)) * lineLength * lines;
    const double beyondText = (bytesInUse() - before) / entries - text;

    Figure time = figureOf("entry 500,001 to 1,000,000 collapsed, each", "us", later, atMostTimes(1.15));
    time.reference = earlier.median();
    report(time);
    report({"memory per entry beyond its text", "bytes", beyondText, {}, {}, atMost(100)});
    return EXIT_SUCCESS;
}
