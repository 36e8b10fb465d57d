#include "ui/painting/box.h"

#include "ui/painting/boxnode.h"

#include <QQuickWindow>

#include <algorithm>
#include <vector>

namespace {

// Boxes of one look share one image. Used while polishing only, so on the main thread.
struct PaintedBox
{
    BoxStyle style;
    QSize size;
    qreal ratio;
    QImage image;
};

QImage sharedImage(const BoxStyle &style, QSize size, qreal ratio)
{
    constexpr std::size_t capacity = 32;
    static std::vector<PaintedBox> painted;
    const auto known = std::find_if(painted.cbegin(), painted.cend(), [&](const PaintedBox &box) {
        return box.size == size && qFuzzyCompare(box.ratio, ratio) && box.style == style;
    });
    if (known != painted.cend()) {
        return known->image;
    }
    if (painted.size() == capacity) {
        painted.erase(painted.begin());
    }
    painted.push_back({style, size, ratio, paintBox(style, size, ratio)});
    return painted.back().image;
}

} // namespace

Box::Box(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &Box::styleChanged, this, &QQuickItem::polish);
}

BoxStyle Box::style() const
{
    return {m_color,       m_endColor,   m_borderColor,  m_radius,
            m_shadowColor, m_shadowBlur, m_shadowOffset, m_borderWidth};
}

void Box::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        polish();
    }
}

void Box::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged
        || change == ItemVisibleHasChanged) {
        polish();
    }
}

void Box::updatePolish()
{
    if (!isVisible() || size().isEmpty()) {
        return;
    }
    const BoxStyle look = style();
    const qreal ratio = window()->effectiveDevicePixelRatio();
    const QSize whole = (size() * ratio).toSize();
    const QSize needed = look.endColor.isValid() ? whole : stretchableSize(look, whole, ratio);
    const QImage image = sharedImage(look, needed, ratio);
    m_imageChanged = m_imageChanged || image.cacheKey() != m_image.cacheKey();
    m_image = image;
    update();
}

QSGNode *Box::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *box = static_cast<BoxNode *>(node);
    if (m_image.isNull() || size().isEmpty()) {
        delete box;
        return nullptr;
    }
    if (!box) {
        box = BoxNode::create(window());
        m_imageChanged = true;
    }
    if (m_imageChanged) {
        box->setImage(m_image);
        m_imageChanged = false;
    }
    box->setLook(style(), size(), window()->effectiveDevicePixelRatio());
    return box;
}
