#include "inside/benchwindow.h"

#include "measure/figure.h"

#include <QElapsedTimer>
#include <QQuickItem>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 20;

/// The time that the connector has taken itself, in milliseconds.
class CommandTime
{
public:
    explicit CommandTime(ConnectorViewModel &viewModel)
    {
        // The window renders what was pressed at this signal, before this receiver gets it.
        QObject::connect(&viewModel, &ConnectorViewModel::aboutToBlock, &m_context,
                         [this] { m_clock.start(); });
        QObject::connect(viewModel.logs(), &QAbstractItemModel::rowsAboutToBeInserted, &m_context,
                         [this] { m_total += double(m_clock.nsecsElapsed()) / 1e6; });
    }

    [[nodiscard]] double total() const { return m_total; }

private:
    QObject m_context;
    QElapsedTimer m_clock;
    double m_total = 0;
};

/// What a click takes beyond its command until the frame that shows its outcome. A button renders that frame
/// itself, before it returns to the event loop.
template <typename Condition>
double click(BenchWindow &bench, const QString &title, const Condition &isOutcome)
{
    const QQuickItem &button = bench.item("title", title);
    const QPointF middle(button.width() / 2, button.height() / 2);
    bench.page().setContentY(bench.page().contentY() + button.mapToScene(middle).y()
                             - bench.page().height() / 2);
    bench.settle();
    const QPointF place = button.mapToScene(middle);
    const CommandTime commands(bench.viewModel());
    QObject frames;
    QElapsedTimer clock;
    double shown = 0;
    QObject::connect(
        &bench.window(), &QQuickWindow::frameSwapped, &frames,
        [&] {
            if (shown == 0 && isOutcome()) {
                shown = double(clock.nsecsElapsed()) / 1e6 - commands.total();
            }
        },
        Qt::DirectConnection);
    clock.start();
    bench.mouse(QEvent::MouseButtonPress, place);
    bench.mouse(QEvent::MouseButtonRelease, place);
    if (shown == 0) {
        qFatal("a click had no outcome");
    }
    return shown;
}

void benchTabs(BenchWindow &bench)
{
    const CommandLog &log = *bench.viewModel().logs();
    Samples switching;
    for (int round = 0; round < rounds; ++round) {
        const bool even = round % 2 == 0;
        const QString id = even ? u"okx"_s : u"bybit"_s;
        // The saved credentials of the exchange are loaded.
        const auto isLoaded = [&, before = log.count()] {
            return bench.viewModel().selectedExchangeId() == id && log.count() > before;
        };
        switching.add(click(bench, even ? u"OKX"_s : u"Bybit"_s, isLoaded));
    }
    report(figureOf("a tab's switch, without its command", "ms", switching, atMost(8)));
}

void benchPress(BenchWindow &bench)
{
    const CommandLog &log = *bench.viewModel().logs();
    Samples pressing;
    for (int round = 0; round < rounds; ++round) {
        pressing.add(
            click(bench, u"Check server"_s, [&, before = log.count()] { return log.count() > before; }));
    }
    report(figureOf("a press of a button, without its command", "ms", pressing, atMost(8)));
}

void benchDetails(BenchWindow &bench)
{
    const ConnectorViewModel &viewModel = bench.viewModel();
    Samples opening;
    for (int round = 0; round < rounds; ++round) {
        opening.add(click(bench, u"Show details"_s, [&] { return viewModel.tokenDetailsExpanded(); }));
        static_cast<void>(click(bench, u"Hide details"_s, [&] { return !viewModel.tokenDetailsExpanded(); }));
    }
    report(figureOf("opening the details", "ms", opening, atMost(8)));
}

void benchEndOfLog(BenchWindow &bench)
{
    constexpr int entries = 500'000;
    while (bench.viewModel().logs()->count() < entries) {
        addEntry(bench.viewModel(), linesOf(50, 2));
    }
    bench.viewModel().setLogsExpanded(true);
    bench.page().forceActiveFocus();
    bench.settle();
    Samples reaching;
    for (int round = 0; round < rounds; ++round) {
        bench.key(Qt::Key_Home);
        bench.settle();
        reaching.add(bench.toFrame([&] { bench.key(Qt::Key_End); }));
        if (bench.page().contentY() != bench.page().maximumY()) {
            qFatal("the end was not reached");
        }
    }
    report(figureOf("the End key in a log of 500,000 entries", "ms", reaching, atMost(16)));
}

} // namespace

// What the user does, from the event to the frame that shows its outcome.
int main(int argc, char *argv[])
{
    BenchWindow bench(argc, argv);
    benchTabs(bench);
    benchPress(bench);
    benchDetails(bench);
    benchEndOfLog(bench);
    return EXIT_SUCCESS;
}
