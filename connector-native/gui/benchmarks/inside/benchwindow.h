#pragma once

#include "bridge/connectorviewmodel.h"
#include "ui/scrolling/scrollarea.h"

#include "measure/samples.h"

#include <QGuiApplication>
#include <QPointF>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSemaphore>
#include <QTemporaryDir>

#include <memory>
#include <utility>

/// The application with its one window in the process of a benchmark, on the renderer the program would
/// choose. Its connector is the simulator beside the benchmark, with a state of its own.
class BenchWindow
{
public:
    /// Returns when the window has appeared and everything it does then is done.
    BenchWindow(int &argc, char **argv);

    [[nodiscard]] QQuickWindow &window() const { return *m_window; }
    [[nodiscard]] ConnectorViewModel &viewModel() const { return *m_viewModel; }
    [[nodiscard]] ScrollArea &page() const { return *m_page; }

    /// Puts the present state on the screen and returns when it is there.
    void frame();
    /// The time from the beginning of an action to the end of the frame that shows its outcome.
    template <typename Action> [[nodiscard]] double toFrame(Action &&action)
    {
        return milliseconds([&] {
            std::forward<Action>(action)();
            frame();
        });
    }
    /// Lets everything happen that is queued.
    void settle();

    void wheelDown();
    void mouse(QEvent::Type type, QPointF position);
    void key(int key, const QString &text = {});

    /// The first item of the window that has such a property.
    [[nodiscard]] QQuickItem &item(const char *property, const QString &value) const;

private:
    QTemporaryDir m_state;
    QGuiApplication m_application;
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_root;
    QQuickWindow *m_window = nullptr;
    ConnectorViewModel *m_viewModel = nullptr;
    ScrollArea *m_page = nullptr;
    QSemaphore m_frames;
};

/// An entry as a run of the connector leaves it, with everything told to the window that a run tells it.
void addEntry(ConnectorViewModel &viewModel, const QByteArray &output);

/// So many lines of so many bytes each, the line feed included; no two calls give the same text.
[[nodiscard]] QByteArray linesOf(int lineLength, int count);
