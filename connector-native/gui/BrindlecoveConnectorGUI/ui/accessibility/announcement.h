#pragma once

class QQuickWindow;
class QString;

/// Has a screen reader speak a sentence about a window. Main thread only.
void announce(QQuickWindow *window, const QString &sentence);
