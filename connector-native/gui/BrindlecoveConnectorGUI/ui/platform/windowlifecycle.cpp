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
    // Queued: the handler runs commands, and must not do so in the middle of rendering.
    constexpr auto onceAfterwards =
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection);
    m_frame = connect(
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

// Not asked of the window: it also disappears while it is being destroyed, and is no longer what it was.
void WindowLifecycle::followVisibility(bool isVisible)
{
    disconnect(m_frame);
    if (isVisible) {
        awaitFrame();
    } else if (m_appeared) {
        m_appeared = false;
        emit disappeared();
    }
}
