#include "inside/benchwindow.h"

#include "measure/figure.h"

#include <QTimer>

#include <chrono>
#include <cstdlib>

using namespace std::chrono_literals;

// Counts what a window draws that nobody touches.
int main(int argc, char *argv[])
{
    BenchWindow bench(argc, argv);
    // The frame that ended the wait has asked for one more.
    bench.settle();
    QEventLoop loop;
    QTimer::singleShot(1s, &loop, &QEventLoop::quit);
    loop.exec();
    int frames = 0;
    QObject::connect(
        &bench.window(), &QQuickWindow::frameSwapped, &loop, [&frames] { ++frames; }, Qt::DirectConnection);
    QTimer::singleShot(10s, &loop, &QEventLoop::quit);
    loop.exec();
    report({"idle window: frames drawn in 10 s", "frames", double(frames), {}, {}, atMost(0)});
    return EXIT_SUCCESS;
}
