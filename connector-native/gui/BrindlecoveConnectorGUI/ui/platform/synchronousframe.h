#pragma once

class QQuickWindow;

/// Renders a window's present state before it returns. Call it before the thread is blocked: a scheduled
/// frame would appear only after that. Does nothing for no window or a hidden one. Main thread only.
void renderNow(QQuickWindow *window);
