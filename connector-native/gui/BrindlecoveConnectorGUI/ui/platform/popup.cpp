#include "ui/platform/popup.h"

QQuickItem *popupAround(QQuickItem *item)
{
    // The class of popups is not public, so it is known by its name only.
    while (item && !item->inherits("QQuickPopupItem")) {
        item = item->parentItem();
    }
    return item;
}
