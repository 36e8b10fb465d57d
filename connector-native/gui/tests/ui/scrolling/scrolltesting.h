#pragma once

#include "ui/scrolling/scrollarea.h"
#include "windowtesting.h"

/// An area with content of a height and nothing in it.
inline ScrollArea *addArea(QQuickItem *parent, const QRectF &place, qreal contentHeight)
{
    auto *area = new ScrollArea;
    area->setParent(parent);
    area->setParentItem(parent);
    area->setPosition(place.topLeft());
    area->setSize(place.size());
    auto *content = new QQuickItem(area);
    content->setHeight(contentHeight);
    area->setContent(content);
    return area;
}
