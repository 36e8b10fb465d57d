#include "inside/benchwindow.h"

#include "measure/figure.h"

#include <QQmlComponent>
#include <QQuickItem>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 10;
constexpr int size = 1 << 20;

// The same text in an item of Qt's own in a window of its own, made and shown.
double plainTextToFrame(BenchWindow &bench, const QString &text)
{
    QQmlComponent component(qmlEngine(&bench.page()));
    component.setData(R"(
        import QtQuick
        Text {
            font.family: "monospace"
            textFormat: Text.PlainText
            visible: false
            width: 1000
            wrapMode: Text.Wrap
        })",
                      {});
    const std::unique_ptr<QObject> item(component.create());
    auto *const shown = qobject_cast<QQuickItem *>(item.get());
    shown->setParentItem(bench.window().contentItem());
    const double taken = bench.toFrame([&] {
        shown->setProperty("text", text);
        shown->setVisible(true);
    });
    shown->setVisible(false);
    bench.settle();
    return taken;
}

struct Case
{
    const char *name;
    QByteArray output;
};

constexpr double scrollingLimit = 8; // In milliseconds.

void benchOpening(BenchWindow &bench, const Case &measured)
{
    const QString text = QString::fromLatin1(measured.output);
    Samples opening;
    Samples plain;
    for (int round = 0; round < rounds; ++round) {
        opening.add(bench.toFrame([&] { bench.viewModel().setLogsExpanded(true); }));
        bench.viewModel().setLogsExpanded(false);
        bench.settle();
        plain.add(plainTextToFrame(bench, text));
    }
    Figure figure = figureOf(std::string(measured.name) + ", opened", "ms", opening, atMostTimes(1.0));
    figure.reference = plain.median();
    report(figure);
}

void benchScrolling(BenchWindow &bench, const Case &measured)
{
    constexpr int notches = 60;
    bench.viewModel().setLogsExpanded(true);
    bench.settle();
    bench.page().setContentY(bench.page().maximumY() / 2);
    bench.settle();
    Samples frames;
    for (int notch = 0; notch < notches; ++notch) {
        frames.add(bench.toFrame([&] { bench.wheelDown(); }));
    }
    report(figureOf(std::string(measured.name) + ", frame of a wheel step", "ms", frames,
                    atMost(scrollingLimit)));
}

} // namespace

// bench_output lines|line: one output of 1 MiB, in many lines or in one.
int main(int argc, char *argv[])
{
    const bool oneLine = argc > 1 && qstrcmp(argv[1], "line") == 0;
    const Case measured = oneLine ? Case{"one line of 1 MiB", linesOf(size, 1)}
                                  : Case{"65,536 lines of 16 bytes", linesOf(16, size / 16)};
    BenchWindow bench(argc, argv);
    addEntry(bench.viewModel(), measured.output);
    bench.page().setContentY(bench.page().maximumY());
    bench.settle();
    benchOpening(bench, measured);
    benchScrolling(bench, measured);
    return EXIT_SUCCESS;
}
