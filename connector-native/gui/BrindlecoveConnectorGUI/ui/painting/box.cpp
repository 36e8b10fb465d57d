#include "ui/painting/box.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRectangleNode>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <utility>
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

// Three adjacent stretches of one axis: their starts, and the end of the last.
using Cuts = std::array<qreal, 4>;

QRectF cell(const Cuts &x, const Cuts &y, std::size_t index)
{
    const std::size_t column = index % 3;
    const std::size_t row = index / 3;
    return {QPointF(x[column], y[row]), QPointF(x[column + 1], y[row + 1])};
}

// One axis of an image whose ends stay as painted. Lengths are in device pixels, but for the target.
struct Axis
{
    int imageLength;
    int margin;
    int fixed; ///< At each end.

    [[nodiscard]] Cuts source() const
    {
        return {0, qreal(fixed), qreal(imageLength - fixed), qreal(imageLength)};
    }

    // In logical pixels, relative to the box. `origin` is its position in the scene: each cut must fall
    // between two device pixels, or stretches would overlap or leave a gap.
    [[nodiscard]] Cuts target(qreal origin, qreal length, qreal ratio) const
    {
        const qreal first = std::round(origin * ratio) - margin;
        const qreal last = std::round((origin + length) * ratio) + margin;
        Cuts cuts{first, first + fixed, last - fixed, last};
        std::for_each(cuts.begin(), cuts.end(), [&](qreal &cut) { cut = cut / ratio - origin; });
        return cuts;
    }
};

Axis axisOf(const BoxStyle &style, int imageLength, qreal ratio)
{
    const int margin = shadowMargin(style, ratio);
    return {imageLength, margin, std::min(margin + cornerExtent(style, ratio), imageLength / 2)};
}

/// Nine images of one texture: corners as painted, edges and middle stretched. Under a scale it is one image
/// that was painted for its size on the screen, since the software renderer rounds each image to whole pixels
/// by itself; outline and corners are not scaled.
class BoxNode : public QSGNode
{
public:
    explicit BoxNode(QQuickWindow *window)
        : m_window(window)
        , m_middle(window->createRectangleNode())
    {
        setFlag(UsePreprocess);
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

    void setLook(const BoxStyle &style, QSize imageSize, QSizeF size, qreal ratio)
    {
        m_style = style;
        m_imageSize = imageSize;
        m_size = size;
        m_ratio = ratio;
        // The old texture stays until the new one is set: the software renderer reads it on every change.
        const std::unique_ptr<QSGTexture> outdated = std::move(m_wholeTexture);
        lay(sceneTransform());
    }

    // Before each frame: an item is not notified when an ancestor moves or scales it.
    void preprocess() override
    {
        if (const QTransform toScene = sceneTransform(); toScene != m_laidBy) {
            lay(toScene);
        }
    }

private:
    [[nodiscard]] QTransform sceneTransform() const
    {
        QMatrix4x4 toScene;
        for (const QSGNode *node = parent(); node; node = node->parent()) {
            if (node->type() == TransformNodeType) {
                toScene = static_cast<const QSGTransformNode *>(node)->matrix() * toScene;
            }
        }
        return toScene.toTransform();
    }

    void lay(const QTransform &toScene)
    {
        m_laidBy = toScene;
        if (toScene.isScaling()) {
            layWhole(toScene);
        } else {
            layPatches({toScene.dx(), toScene.dy()});
        }
    }

    void layPatches(QPointF origin)
    {
        middlePatch()->setTexture(m_texture.get());
        const Axis xAxis = axisOf(m_style, m_imageSize.width(), m_ratio);
        const Axis yAxis = axisOf(m_style, m_imageSize.height(), m_ratio);
        const Cuts sourceX = xAxis.source();
        const Cuts sourceY = yAxis.source();
        const Cuts targetX = xAxis.target(origin.x(), m_size.width(), m_ratio);
        const Cuts targetY = yAxis.target(origin.y(), m_size.height(), m_ratio);
        for (std::size_t i = 0; i < m_patches.size(); ++i) {
            m_patches[i]->setSourceRect(cell(sourceX, sourceY, i));
            m_patches[i]->setRect(cell(targetX, targetY, i));
        }
        if (!m_style.endColor.isValid()) {
            fillMiddle(origin);
        }
    }

    // Without a gradient, all between the upper and the lower outline is a rectangle, which every renderer
    // fills fastest.
    void fillMiddle(QPointF origin)
    {
        QSGImageNode &upper = *m_patches[1];
        QSGImageNode &lower = *m_patches[7];
        const int outline = std::max(outlineWidth(m_style, m_ratio), qCeil(m_ratio));
        const qreal plain =
            std::max(0.0, upper.sourceRect().height() - shadowMargin(m_style, m_ratio) - outline);
        const qreal logical = plain / m_ratio;
        upper.setSourceRect(upper.sourceRect().adjusted(0, 0, 0, -plain));
        upper.setRect(upper.rect().adjusted(0, 0, 0, -logical));
        lower.setSourceRect(lower.sourceRect().adjusted(0, plain, 0, 0));
        lower.setRect(lower.rect().adjusted(0, logical, 0, 0));
        const QRectF middle = middlePatch()->rect().adjusted(0, -logical, 0, logical);
        // The software renderer repaints an opaque rectangle in whole logical pixels only, which would leave
        // a gap to its neighbours. Below them it may be larger.
        const QRectF whole = QRectF(middle.translated(origin).toAlignedRect()).translated(-origin);
        m_middle->setRect(m_style.color.alpha() == 255 ? whole & QRectF(QPointF(), m_size) : middle);
        m_middle->setColor(m_style.color.isValid() ? m_style.color : QColor(Qt::transparent));
        middlePatch()->setRect(QRectF());
    }

    void layWhole(const QTransform &toScene)
    {
        const QTransform toPixels = toScene * QTransform::fromScale(m_ratio, m_ratio);
        const QRectF box = toPixels.mapRect(QRectF(QPointF(), m_size));
        const QRect pixels(box.topLeft().toPoint(), box.bottomRight().toPoint() - QPoint(1, 1));
        const int margin = shadowMargin(m_style, m_ratio);
        const QRect image = pixels.adjusted(-margin, -margin, margin, margin);
        std::unique_ptr<QSGTexture> outdated;
        if (!m_wholeTexture || m_wholeTexture->textureSize() != image.size()) {
            outdated = std::move(m_wholeTexture);
            m_wholeTexture.reset(m_window->createTextureFromImage(paintBox(m_style, pixels.size(), m_ratio),
                                                                  QQuickWindow::TextureHasAlphaChannel));
        }
        middlePatch()->setTexture(m_wholeTexture.get());
        m_middle->setRect(QRectF());
        for (QSGImageNode *patch : m_patches) {
            patch->setRect(QRectF());
        }
        middlePatch()->setSourceRect(QRectF(QPointF(), image.size()));
        middlePatch()->setRect(toPixels.inverted().mapRect(QRectF(image)));
    }

    [[nodiscard]] QSGImageNode *middlePatch() const { return m_patches[m_patches.size() / 2]; }

    QQuickWindow *m_window;
    std::unique_ptr<QSGTexture> m_texture;
    std::unique_ptr<QSGTexture> m_wholeTexture;
    QSGRectangleNode *m_middle;
    std::array<QSGImageNode *, 9> m_patches{};
    BoxStyle m_style;
    QSize m_imageSize;
    QSizeF m_size;
    qreal m_ratio = 1;
    QTransform m_laidBy;
};

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
        box = new BoxNode(window());
        m_imageChanged = true;
    }
    if (m_imageChanged) {
        box->setTexture(window()->createTextureFromImage(m_image, QQuickWindow::TextureHasAlphaChannel));
        m_imageChanged = false;
    }
    box->setLook(style(), m_image.size(), size(), window()->effectiveDevicePixelRatio());
    return box;
}
