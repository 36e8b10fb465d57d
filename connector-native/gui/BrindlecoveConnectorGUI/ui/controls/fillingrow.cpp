#include "ui/controls/fillingrow.h"

#include <algorithm>
#include <cmath>

FillingRow::FillingRow(QQuickItem *parent)
    : QQuickItem(parent)
{
    connect(this, &FillingRow::layoutChanged, this, &QQuickItem::polish);
}

void FillingRow::componentComplete()
{
    QQuickItem::componentComplete();
    layOut();
}

void FillingRow::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    polish();
}

void FillingRow::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemChildAddedChange) {
        connect(data.item, &QQuickItem::widthChanged, this, &QQuickItem::polish);
        connect(data.item, &QQuickItem::heightChanged, this, &QQuickItem::polish);
        polish();
    } else if (change == ItemChildRemovedChange) {
        data.item->disconnect(this);
        polish();
    }
}

void FillingRow::layOut()
{
    const QList<QQuickItem *> items = childItems();
    if (m_filling) {
        qreal left = width() + m_spacing;
        for (const QQuickItem *item : items) {
            left -= m_spacing + (item == m_filling ? 0 : item->width());
        }
        m_filling->setWidth(std::max(0.0, left));
    }
    qreal height = 0;
    for (const QQuickItem *item : items) {
        height = std::max(height, item->height());
    }
    qreal x = 0;
    for (QQuickItem *item : items) {
        item->setPosition({x, std::round((height - item->height()) / 2)});
        x += item->width() + m_spacing;
    }
    setImplicitHeight(height);
}
