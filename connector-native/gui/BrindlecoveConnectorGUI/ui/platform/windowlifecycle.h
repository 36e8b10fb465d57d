#pragma once

#include "ui/platform/synchronousframe.h"

#include <QPointer>
#include <QQuickWindow>

/// Signals when a window has appeared on the screen and when it has disappeared. Main thread only.
class WindowLifecycle : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickWindow *window READ window WRITE setWindow NOTIFY windowChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickWindow *window() const { return m_window; }
    void setWindow(QQuickWindow *window);

    Q_INVOKABLE void renderNow() { ::renderNow(m_window); }

signals:
    void windowChanged();
    /// The first frame since the window was shown is on the screen. After the handler its changes are
    /// rendered before anything else runs.
    void appeared();
    /// A window that had appeared is no longer shown.
    void disappeared();

private:
    void awaitFrame();
    void followVisibility(bool isVisible);

    QPointer<QQuickWindow> m_window;
    bool m_appeared = false;
};
