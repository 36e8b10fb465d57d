#pragma once

class QQuickWindow;

/// Puts a window's present state on the screen before it returns. A thread about to be blocked needs that:
/// nothing it schedules, an animation included, would be seen before it is free again. Does nothing for no
/// window or a hidden one. Main thread only.
void renderNow(QQuickWindow *window);
