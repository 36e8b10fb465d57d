#pragma once

class QQuickWindow;
class QString;

/// Has assistive technologies speak a sentence about what has happened in a window. Main thread only.
void announce(QQuickWindow *window, const QString &sentence);
