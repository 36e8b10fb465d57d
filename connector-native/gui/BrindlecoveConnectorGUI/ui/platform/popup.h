#pragma once

#include <QQuickItem>

/// The popup that an item is in, or is; null for one of the window's own. Main thread only.
[[nodiscard]] QQuickItem *popupAround(QQuickItem *item);
