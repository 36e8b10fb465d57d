#include "inside/benchwindow.h"

#include "measure/figure.h"
#include "measure/processstate.h"

#include <malloc.h>
#include <unistd.h>

#include <cstdlib>

namespace {

constexpr int entries = 50'000;
constexpr int rounds = 20;

QByteArray entryText()
{
    return linesOf(60, 5);
}

double memoryInUse()
{
    malloc_trim(0);
    return proportionalMemory(getpid()) / 1024;
}

bool hasFinePixels(const BenchWindow &bench)
{
    return bench.window().effectiveDevicePixelRatio() > 1.5;
}

// Four times the pixels have a target of their own where it is about painting, elsewhere none.
Target onCoarsePixels(const BenchWindow &bench, double limit)
{
    return hasFinePixels(bench) ? Target() : atMost(limit);
}

Target scrolling(const BenchWindow &bench)
{
    return atMost(hasFinePixels(bench) ? 16 : 8);
}

void benchExpanding(BenchWindow &bench)
{
    // Where the button is that a user presses for it.
    bench.page().setContentY(bench.page().maximumY());
    bench.settle();
    const double before = memoryInUse();
    Samples expanding;
    for (int round = 0; round < rounds; ++round) {
        expanding.add(bench.toFrame([&] { bench.viewModel().setLogsExpanded(true); }));
        if (round == 0) {
            bench.settle();
            report({"expand 50,000 entries: memory", "MiB", memoryInUse() - before, {}, {}, atMost(10)});
        }
        bench.viewModel().setLogsExpanded(false);
        bench.settle();
    }
    report(figureOf("expand 50,000 entries to the frame", "ms", expanding, onCoarsePixels(bench, 16)));
    bench.viewModel().setLogsExpanded(true);
    bench.settle();
}

// All of the page but its scroll bar, which has to move.
QImage pageImage(const BenchWindow &bench)
{
    const QImage all = bench.window().grabWindow().convertToFormat(QImage::Format_RGB32);
    const int bar = qRound(20 * all.devicePixelRatio());
    return all.copy(0, 0, all.width() - bar, all.height());
}

// Graphics hardware does not give every shade of an edge twice. Text that has moved changes far more.
bool looksLike(const QImage &image, const QImage &other)
{
    constexpr int tolerance = 8;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (std::abs(qGray(image.pixel(x, y)) - qGray(other.pixel(x, y))) > tolerance) {
                return false;
            }
        }
    }
    return true;
}

void benchInserting(BenchWindow &bench, const std::string &name)
{
    Samples inserting;
    for (int round = 0; round < rounds; ++round) {
        const QByteArray text = entryText();
        inserting.add(bench.toFrame([&] { addEntry(bench.viewModel(), text); }));
        bench.settle();
    }
    report(figureOf(name, "ms", inserting, onCoarsePixels(bench, 6)));
}

void benchReading(BenchWindow &bench)
{
    bench.page().setContentY(bench.page().maximumY() / 2);
    bench.settle();
    const QImage before = pageImage(bench);
    benchInserting(bench, "one more entry while reading in the middle");
    const double changed = looksLike(pageImage(bench), before) ? 0 : 1;
    report({"what is read in the middle has moved", "times", changed, {}, {}, atMost(0)});
}

void benchWheel(BenchWindow &bench)
{
    constexpr int notches = 200;
    Samples frames;
    for (int notch = 0; notch < notches; ++notch) {
        frames.add(bench.toFrame([&] { bench.wheelDown(); }));
    }
    report(figureOf("scroll: frame of a wheel step", "ms", frames, scrolling(bench)));
}

// Each pixel of the bar is many screens of the log.
void benchDragging(BenchWindow &bench)
{
    constexpr int steps = 150;
    bench.page().setContentY(0);
    bench.settle();
    QPointF pointer(bench.page().width() - 6.0, 10);
    bench.mouse(QEvent::MouseButtonPress, pointer);
    bench.frame();
    Samples frames;
    for (int step = 0; step < steps; ++step) {
        pointer.ry() += 4;
        frames.add(bench.toFrame([&] { bench.mouse(QEvent::MouseMove, pointer); }));
    }
    bench.mouse(QEvent::MouseButtonRelease, pointer);
    if (bench.page().contentY() < bench.page().maximumY() / 2) {
        qFatal("the scroll bar was not dragged");
    }
    report(figureOf("scroll: frame of a drag of the bar", "ms", frames, scrolling(bench)));
}

} // namespace

// A long log, expanded, added to and scrolled through.
int main(int argc, char *argv[])
{
    BenchWindow bench(argc, argv);
    for (int entry = 0; entry < entries; ++entry) {
        addEntry(bench.viewModel(), entryText());
    }
    bench.settle();
    benchExpanding(bench);
    benchInserting(bench, "one more entry at the top");
    benchReading(bench);
    benchWheel(bench);
    benchDragging(bench);
    return EXIT_SUCCESS;
}
