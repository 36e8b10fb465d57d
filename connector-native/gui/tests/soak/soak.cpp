// soak [ROUNDS RUNS]: so many rounds of the status polling and so many single runs of the connector. Apart
// from the log, which keeps everything, the process must hold no more afterwards than before. Prints what it
// found.

#include "bridge/connectorviewmodel.h"
#include "bridge/utf8.h"
#include "resources.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int shortRounds = 200;
constexpr int shortRuns = 2000;
constexpr int entriesPerRound = 4;
// What a cache may happen to hold more at one moment than at another. Nine bytes lost in each run of the
// short soak are more.
constexpr qint64 slack = 16'384;

ProgramPlace placeOfConnector()
{
    return {Packaging::Directory, CONNECTOR_DIRECTORY, "/absent/program", "/absent"};
}

// What the first entries of a log take when nothing but the log is filled with the same texts.
qint64 heapOfLog(CommandLog &original, int entries)
{
    const qint64 before = currentResources().heap;
    CommandLog copy;
    for (int row = entries - 1; row >= 0; --row) {
        const CommandLogEntry &entry = original.at(row);
        copy.insertNewest(entry.title, decodeUtf8(entry.output.toUtf8()));
    }
    return currentResources().heap - before;
}

using Load = std::function<void(ConnectorViewModel &viewModel, int count)>;

void runSingly(ConnectorViewModel &viewModel, int count)
{
    for (int i = 0; i < count; ++i) {
        viewModel.checkServer();
    }
}

void pollRounds(ConnectorViewModel &viewModel, int count)
{
    const int wanted = viewModel.logs()->count() + count * entriesPerRound;
    viewModel.startStatusPolling();
    while (viewModel.logs()->count() < wanted) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    viewModel.stopStatusPolling();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool isReachable(ConnectorViewModel &viewModel)
{
    return viewModel.serverStatus() == "reachable"_L1;
}

// Measured from a tenth of the way on, when everything that is kept once is there.
bool soak(const QString &name, const Load &load, std::chrono::milliseconds pause, int count)
{
    ConnectorViewModel viewModel(placeOfConnector(), pause);
    QElapsedTimer clock;
    clock.start();
    load(viewModel, std::max(count / 10, 1));
    const int entriesBefore = viewModel.logs()->count();
    const Resources before = currentResources();
    load(viewModel, count - count / 10);
    const Resources after = currentResources();
    const qint64 seconds = clock.elapsed() / 1000;

    const int entries = viewModel.logs()->count();
    const qint64 logged = heapOfLog(*viewModel.logs(), entries) - heapOfLog(*viewModel.logs(), entriesBefore);
    const qint64 others = after.heap - before.heap - logged;
    QTextStream(stdout) << name << ": " << count << " in " << seconds << " s, descriptors "
                        << before.descriptors << " -> " << after.descriptors << ", children "
                        << (after.children ? "left" : "none") << ", log " << logged << " bytes, other memory "
                        << others << " bytes, peak " << after.peak / (1 << 20) << " MiB\n";
    return isReachable(viewModel) && after.descriptors == before.descriptors && !after.children
        && others <= slack;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int rounds = arguments.value(1, QString::number(shortRounds)).toInt();
    const int runs = arguments.value(2, QString::number(shortRuns)).toInt();
    bool isConstant = rounds > 0 && runs > 0;
    isConstant &= soak(u"runs"_s, runSingly, 1h, runs);
    isConstant &= soak(u"rounds without a pause"_s, pollRounds, 0ms, rounds);
    isConstant &= soak(u"rounds with a pause of 1 ms"_s, pollRounds, 1ms, rounds);
    return isConstant ? EXIT_SUCCESS : EXIT_FAILURE;
}
