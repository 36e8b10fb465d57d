#include "ui/platform/itemfilter.h"

void ItemFilter::setItem(QQuickItem *item)
{
    if (m_item == item) {
        return;
    }
    if (m_item) {
        m_item->removeEventFilter(this);
        m_item->disconnect(this);
    }
    m_item = item;
    if (m_item) {
        m_item->installEventFilter(this);
    }
    emit itemChanged();
}
