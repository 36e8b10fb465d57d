#include "inside/benchwindow.h"

#include "bridge/utf8.h"
#include "ui/accessibility/accessiblefactory.h"
#include "ui/platform/qmlmodule.h"
#include "ui/platform/renderer.h"
#include "ui/platform/synchronousframe.h"

#include <QEventLoop>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QQuickItem>
#include <QTimer>
#include <QWheelEvent>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// Runs before the application object is made.
int &prepared(int &argc, const QTemporaryDir &state)
{
    qputenv("BRINDLECOVE_SIMULATOR_STATE", state.path().toLocal8Bit());
    chooseRenderer();
    return argc;
}

void passTime(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

bool loadedCredentials(const CommandLog &log)
{
    for (int row = 0; row < log.count(); ++row) {
        if (log.at(row).title.startsWith("load-credentials"_L1)) {
            return true;
        }
    }
    return false;
}

QQuickItem *itemBelow(QQuickItem *item, const char *property, const QString &value)
{
    if (item->property(property).toString() == value) {
        return item;
    }
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *const found = itemBelow(child, property, value)) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

BenchWindow::BenchWindow(int &argc, char **argv)
    : m_application(prepared(argc, m_state), argv)
{
    installAccessibleFactory();
    registerQmlModule();
    m_engine.addImportPath(u":/"_s);
    QQmlComponent component(&m_engine, u"qrc:/BrindlecoveConnectorGUI/ui/BrindlecoveConnectorGUIApp.qml"_s);
    m_root.reset(component.create());
    m_window = qobject_cast<QQuickWindow *>(m_root.get());
    m_viewModel = m_window ? m_window->findChild<ConnectorViewModel *>() : nullptr;
    m_page = m_window ? m_window->findChild<ScrollArea *>() : nullptr;
    if (!m_viewModel || !m_page) {
        qFatal("the window could not be made");
    }
    // Directly: with a renderer of its own thread, that thread says when.
    QObject::connect(
        m_window, &QQuickWindow::frameSwapped, m_window, [this] { m_frames.release(); },
        Qt::DirectConnection);
    m_window->requestActivate();
    // Loading the saved credentials is the last thing the appearing window does, the first round of polling
    // what follows.
    while (!loadedCredentials(*m_viewModel->logs()) || m_viewModel->isPolling()) {
        passTime(10ms);
    }
    settle();
}

void BenchWindow::frame()
{
    m_frames.tryAcquire(m_frames.available());
    // Without anything to draw there would be no frame to wait for.
    m_window->update();
    renderNow(m_window);
    m_frames.acquire();
}

void BenchWindow::settle()
{
    constexpr auto quiet = 200ms;
    passTime(quiet);
    frame();
}

void BenchWindow::wheelDown()
{
    constexpr QPoint notch(0, -120);
    const QPointF position(m_window->width() / 2.0, m_window->height() / 2.0);
    QWheelEvent event(position, m_window->mapToGlobal(position), {}, notch, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(m_window, &event);
}

void BenchWindow::mouse(QEvent::Type type, QPointF position)
{
    const bool held = type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, position, m_window->mapToGlobal(position),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      held ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window, &event);
}

void BenchWindow::key(int key, const QString &text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(m_window, &event);
    }
}

QQuickItem &BenchWindow::item(const char *property, const QString &value) const
{
    QQuickItem *const found = itemBelow(m_window->contentItem(), property, value);
    if (!found) {
        qFatal("there is no %s", qPrintable(value));
    }
    return *found;
}

void addEntry(ConnectorViewModel &viewModel, const QByteArray &output)
{
    viewModel.logs()->insertNewest(u"update-check"_s, decodeUtf8(output));
    emit viewModel.logsChanged();
}

QByteArray linesOf(int lineLength, int count)
{
    static int made = 0;
    QByteArray line = "entry " + QByteArray::number(++made) + ": connector_health=ready reachable=true ";
    line = line.repeated(lineLength / line.size() + 1).first(lineLength - 1) + '\n';
    return line.repeated(count);
}
