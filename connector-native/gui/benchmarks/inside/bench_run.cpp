#include "inside/benchwindow.h"

#include "measure/figure.h"

#include <QProcess>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// The small program that runs a child and does nothing else, on request.
class BareSpawn
{
public:
    BareSpawn()
    {
        const QString directory = QCoreApplication::applicationDirPath();
        m_process.start(directory + u"/barespawn"_s,
                        {directory + u"/brindlecove-connector"_s, u"update-check"_s});
        if (!m_process.waitForStarted()) {
            qFatal("barespawn is not there");
        }
    }
    Q_DISABLE_COPY(BareSpawn)
    ~BareSpawn()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }

    [[nodiscard]] double run()
    {
        m_process.write("\n");
        while (!m_process.canReadLine()) {
            m_process.waitForReadyRead();
        }
        return m_process.readLine().trimmed().toDouble();
    }

private:
    QProcess m_process;
};

} // namespace

// One run of the connector by the program, and by a program that does the least: in turn.
int main(int argc, char *argv[])
{
    constexpr int rounds = 200;
    BenchWindow bench(argc, argv);
    BareSpawn bare;
    Samples own;
    Samples reference;
    for (int round = 0; round < rounds; ++round) {
        own.add(milliseconds([&] { bench.viewModel().checkUpdate(); }));
        bench.frame();
        reference.add(bare.run());
    }
    Figure figure = figureOf("run with a small child", "ms", own, atMostTimes(1.15));
    figure.reference = reference.median();
    report(figure);
    return EXIT_SUCCESS;
}
