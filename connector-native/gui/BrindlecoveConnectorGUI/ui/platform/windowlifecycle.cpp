#include "ui/platform/windowlifecycle.h"

void WindowLifecycle::setWindow(QQuickWindow *window)
{
    if (m_window == window) {
        return;
    }
    if (m_window) {
        m_window->disconnect(this);
        followVisibility(false);
    }
    m_window = window;
    if (m_window) {
        connect(m_window, &QWindow::visibleChanged, this, &WindowLifecycle::followVisibility);
        followVisibility(m_window->isVisible());
    }
    emit windowChanged();
}

void WindowLifecycle::awaitFrame()
{
    // Queued: the handler runs commands, which must not start during rendering.
    constexpr auto onceAfterwards =
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection);
    connect(
        m_window, &QQuickWindow::frameSwapped, this,
        [this] {
            if (!m_appeared && m_window && m_window->isVisible()) {
                m_appeared = true;
                emit appeared();
                renderNow();
            }
        },
        onceAfterwards);
}

// Takes no window: this is also called during its destruction, when it cannot be used any more.
void WindowLifecycle::followVisibility(bool isVisible)
{
    if (isVisible) {
        awaitFrame();
    } else if (m_appeared) {
        m_appeared = false;
        emit disappeared();
    }
}
