#include "ui/surface.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRectangleNode>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <vector>

namespace {

// Boxes of one look share one image. Used while polishing only, so on the main thread.
struct PaintedSurface
{
    SurfaceStyle style;
    QSize size;
    qreal ratio = 1;
    QImage image;
};

QImage sharedImage(const SurfaceStyle &style, QSize size, qreal ratio)
{
    constexpr std::size_t Capacity = 32;
    static std::vector<PaintedSurface> painted;
    const auto known = std::find_if(painted.cbegin(), painted.cend(), [&](const PaintedSurface &surface) {
        return surface.size == size && qFuzzyCompare(surface.ratio, ratio) && surface.style == style;
    });
    if (known != painted.cend()) {
        return known->image;
    }
    if (painted.size() == Capacity) {
        painted.erase(painted.begin());
    }
    painted.push_back({style, size, ratio, paintSurface(style, size, ratio)});
    return painted.back().image;
}

// The start of each of three stretches along one axis, and the end of the last.
using Cuts = std::array<qreal, 4>;

Cuts cutsOf(qreal length, qreal fixed)
{
    return {0, fixed, length - fixed, length};
}

/// Nine images of one texture: corners as painted, edges and middle stretched.
class SurfaceNode : public QSGNode
{
public:
    explicit SurfaceNode(QQuickWindow *window)
        : m_middle(window->createRectangleNode())
    {
        appendChildNode(m_middle);
        for (QSGImageNode *&patch : m_patches) {
            patch = window->createImageNode();
            patch->setFiltering(QSGTexture::Nearest);
            appendChildNode(patch);
        }
    }

    void setTexture(QSGTexture *texture)
    {
        for (QSGImageNode *patch : m_patches) {
            patch->setTexture(texture);
        }
        m_texture.reset(texture);
    }

    /// Source cuts in texture pixels, target cuts in logical pixels.
    void lay(const Cuts &sourceX, const Cuts &sourceY, const Cuts &targetX, const Cuts &targetY)
    {
        for (std::size_t i = 0; i < m_patches.size(); ++i) {
            const std::size_t row = i / 3;
            const std::size_t column = i % 3;
            m_patches[i]->setSourceRect(QRectF(QPointF(sourceX[column], sourceY[row]),
                                               QPointF(sourceX[column + 1], sourceY[row + 1])));
            m_patches[i]->setRect(QRectF(QPointF(targetX[column], targetY[row]),
                                         QPointF(targetX[column + 1], targetY[row + 1])));
        }
    }

    /// A plain middle is a rectangle, which every renderer fills fastest.
    void fillMiddle(const QColor &color)
    {
        QSGImageNode *patch = m_patches[m_patches.size() / 2];
        m_middle->setRect(patch->rect());
        m_middle->setColor(color);
        patch->setRect(QRectF());
    }

private:
    std::unique_ptr<QSGTexture> m_texture;
    QSGRectangleNode *m_middle;
    std::array<QSGImageNode *, 9> m_patches{};
};

// How much of one axis of the image, in its own pixels, is a corner that must not be stretched.
int fixedPixels(const SurfaceStyle &style, int imageLength, qreal ratio)
{
    return std::min(static_cast<int>((shadowMargin(style) + cornerExtent(style)) * ratio), imageLength / 2);
}

} // namespace

Surface::Surface(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &Surface::styleChanged, this, &QQuickItem::polish);
}

SurfaceStyle Surface::style() const
{
    return {m_color, m_endColor, m_borderColor, m_radius, m_shadowColor, m_shadowBlur, m_shadowOffset};
}

void Surface::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        polish();
    }
}

void Surface::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        polish();
    }
}

void Surface::updatePolish()
{
    if (!window() || size().isEmpty()) {
        return;
    }
    const SurfaceStyle look = style();
    const int stretchable = 2 * cornerExtent(look) + 1;
    const QSize whole(static_cast<int>(std::ceil(width())), static_cast<int>(std::ceil(height())));
    const QSize needed = look.endColor.isValid() ? whole : whole.boundedTo({stretchable, stretchable});
    const QImage image = sharedImage(look, needed, window()->effectiveDevicePixelRatio());
    m_imageChanged = m_imageChanged || image.cacheKey() != m_image.cacheKey();
    m_image = image;
    update();
}

QSGNode *Surface::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *surface = static_cast<SurfaceNode *>(node);
    if (m_image.isNull() || size().isEmpty()) {
        delete surface;
        return nullptr;
    }
    if (!surface) {
        surface = new SurfaceNode(window());
        m_imageChanged = true;
    }
    if (m_imageChanged) {
        surface->setTexture(window()->createTextureFromImage(m_image, QQuickWindow::TextureHasAlphaChannel));
        m_imageChanged = false;
    }
    const SurfaceStyle look = style();
    const qreal ratio = window()->effectiveDevicePixelRatio();
    const int margin = shadowMargin(look);
    const int fixedX = fixedPixels(look, m_image.width(), ratio);
    const int fixedY = fixedPixels(look, m_image.height(), ratio);
    const auto targetCuts = [margin](qreal length, qreal fixed) {
        Cuts cuts = cutsOf(length + 2 * margin, fixed);
        std::for_each(cuts.begin(), cuts.end(), [margin](qreal &cut) { cut -= margin; });
        return cuts;
    };
    surface->lay(cutsOf(m_image.width(), fixedX), cutsOf(m_image.height(), fixedY),
                 targetCuts(width(), fixedX / ratio), targetCuts(height(), fixedY / ratio));
    if (!look.endColor.isValid()) {
        surface->fillMiddle(look.color);
    }
    return surface;
}
