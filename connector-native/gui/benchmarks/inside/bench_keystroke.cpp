#include "inside/benchwindow.h"

#include "measure/figure.h"

#include <QQuickItem>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

// The connector answers a balance of 1 MiB without anything in it that the summary looks for.
void loadLongBalance(BenchWindow &bench)
{
    qputenv("BRINDLECOVE_SIMULATOR_ONLY", "balance");
    qputenv("BRINDLECOVE_SIMULATOR_FLOOD_BYTES", "1048576");
    bench.viewModel().loadBalance();
    bench.settle();
    if (bench.viewModel().selectedDraft().balance.size() != 1 << 20) {
        qFatal("the balance is not as long as it should be");
    }
}

void benchTyping(BenchWindow &bench, const QString &placeholder, const std::string &name)
{
    constexpr int keys = 60;
    auto *const field = bench.item("placeholder", placeholder).property("input").value<QQuickItem *>();
    field->forceActiveFocus(Qt::TabFocusReason);
    bench.settle();
    Samples typing;
    for (int i = 0; i < keys; ++i) {
        typing.add(bench.toFrame([&] { bench.key(Qt::Key_A, u"a"_s); }));
    }
    if (field->property("length").toInt() != keys) {
        qFatal("the keys did not arrive in the field");
    }
    report(figureOf(name, "ms", typing, atMost(8)));
}

} // namespace

int main(int argc, char *argv[])
{
    BenchWindow bench(argc, argv);
    loadLongBalance(bench);
    benchTyping(bench, u"API key"_s, "a keystroke in a field, balance of 1 MiB");
    benchTyping(bench, u"API secret"_s, "a keystroke in a masked field, balance of 1 MiB");
    return EXIT_SUCCESS;
}
