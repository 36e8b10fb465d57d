#pragma once

#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickwindow.h>

/// All visible items below one, in the order of the items, parents before their children.
inline QList<QQuickItem *> shownBelow(const QQuickItem *root)
{
    QList<QQuickItem *> items;
    const QList<QQuickItem *> children = root->childItems();
    for (QQuickItem *child : children) {
        if (child->isVisible()) {
            items.append(child);
            items += shownBelow(child);
        }
    }
    return items;
}

/// The entries of the open context menu.
inline QList<QQuickItem *> menuEntriesOf(const QQuickWindow &window)
{
    QList<QQuickItem *> items = shownBelow(window.contentItem());
    items.removeIf([](const QQuickItem *item) { return !item->inherits("QQuickMenuItem"); });
    return items;
}

/// Where the middle of an item lies in its window.
inline QPoint middleOf(const QQuickItem *item)
{
    return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
}
