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

/// What a click takes beyond its command.
double click(BenchWindow &bench, const QString &title)
{
    const QQuickItem &button = bench.item("title", title);
    const QPointF middle(button.width() / 2, button.height() / 2);
    bench.page().setContentY(bench.page().contentY() + button.mapToScene(middle).y()
                             - bench.page().height() / 2);
    bench.settle();
    const QPointF place = button.mapToScene(middle);
    const CommandTime commands(bench.viewModel());
    const double all = bench.toFrame([&] {
        bench.mouse(QEvent::MouseButtonPress, place);
        bench.mouse(QEvent::MouseButtonRelease, place);
    });
    return all - commands.total();
}

void benchTabs(BenchWindow &bench)
{
    Samples switching;
    for (int round = 0; round < rounds; ++round) {
        const bool even = round % 2 == 0;
        switching.add(click(bench, even ? u"OKX"_s : u"Bybit"_s));
        if (bench.viewModel().selectedExchangeId() != (even ? u"okx"_s : u"bybit"_s)) {
            qFatal("the tab was not switched");
        }
    }
    report(figureOf("a tab's switch, without its command", "ms", switching, atMost(8)));
}

void benchPress(BenchWindow &bench)
{
    const int before = bench.viewModel().logs()->count();
    Samples pressing;
    for (int round = 0; round < rounds; ++round) {
        pressing.add(click(bench, u"Check server"_s));
    }
    if (bench.viewModel().logs()->count() != before + rounds) {
        qFatal("the button was not pressed");
    }
    report(figureOf("a press of a button, without its command", "ms", pressing, atMost(8)));
}

void benchDetails(BenchWindow &bench)
{
    Samples opening;
    for (int round = 0; round < rounds; ++round) {
        opening.add(click(bench, u"Show details"_s));
        if (!bench.viewModel().tokenDetailsExpanded()) {
            qFatal("the details were not opened");
        }
        static_cast<void>(click(bench, u"Hide details"_s));
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
