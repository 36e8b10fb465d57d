#include "ui/painting/boxnode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGNinePatchNode>
#include <QSGRectangleNode>
#include <QSGRenderNode>
#include <QSGRendererInterface>

#include <algorithm>
#include <cmath>

namespace {

// Every how many logical pixels one begins where a device pixel does. 0 where hardly any does.
int commonPixels(qreal ratio)
{
    constexpr int most = 24;
    for (int count = 1; count <= most; ++count) {
        if (qFuzzyCompare(count * ratio, std::round(count * ratio))) {
            return count;
        }
    }
    return 0;
}

} // namespace

// Qt's own node for such images stretches the middle too, however much lies above it, and an image node for
// each corner and edge makes so many nodes that finding out what covers what takes longer than painting.
class BoxNode::Frame : public QSGRenderNode
{
public:
    explicit Frame(QQuickWindow *window)
        : m_window(window)
    {
    }

    void setImage(const QImage &image)
    {
        m_image = image;
        markDirty(DirtyMaterial);
    }

    void setLayout(const Layout &layout)
    {
        if (m_layout != layout) {
            m_layout = layout;
            markDirty(DirtyGeometry);
        }
    }

    [[nodiscard]] QRectF rect() const override { return m_layout.target; }
    [[nodiscard]] RenderingFlags flags() const override { return BoundedRectRendering; }

    void render(const RenderState *state) override
    {
        auto &painter = *static_cast<QPainter *>(
            m_window->rendererInterface()->getResource(m_window, QSGRendererInterface::PainterResource));
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform, false);
        painter.setOpacity(inheritedOpacity());
        const QTransform toScene = matrix()->toTransform();
        // Clipped by one rectangle, images are painted several times as fast as by a region.
        for (const QRect &part : *state->clipRegion() - toScene.mapRect(m_layout.plain).toRect()) {
            painter.resetTransform();
            painter.setClipRegion(part);
            painter.setTransform(toScene);
            drawStretched(painter, m_layout.target, m_image, m_layout.corner);
        }
    }

private:
    QQuickWindow *m_window;
    QImage m_image;
    Layout m_layout;
};

// With the software renderer, the plain part is a rectangle, which is filled fastest and below which nothing
// is painted.
class BoxNode::Painted : public BoxNode
{
public:
    explicit Painted(QQuickWindow *window)
        : m_frame(new Frame(window))
        , m_plain(window->createRectangleNode())
    {
        appendChildNode(m_frame);
        appendChildNode(m_plain);
    }

    void setImage(const QImage &image) override { m_frame->setImage(image); }

private:
    void lay(const Layout &layout, const QColor &fill) override
    {
        m_frame->setLayout(layout);
        // Where an opaque rectangle without a size lies between pixels, one of them becomes black.
        const QColor color = layout.plain.isEmpty() ? QColor(Qt::transparent) : fill;
        if (m_plain->rect() != layout.plain) {
            m_plain->setRect(layout.plain);
        }
        if (m_plain->color() != color) {
            m_plain->setColor(color);
        }
    }

    Frame *m_frame;
    QSGRectangleNode *m_plain;
};

// With the other renderers, one node of Qt's is fastest.
class BoxNode::NinePatch : public BoxNode
{
public:
    explicit NinePatch(QQuickWindow *window)
        : m_window(window)
        , m_patch(window->createNinePatchNode())
    {
        // Its children's lengths are device pixels already, and Qt leaves this uninitialised.
        m_patch->setDevicePixelRatio(1);
        appendChildNode(m_patch);
    }

    void setImage(const QImage &image) override
    {
        m_patch->setTexture(m_window->createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
    }

private:
    void lay(const Layout &layout, const QColor &) override
    {
        const QSize corner = layout.corner;
        m_patch->setBounds(layout.target);
        m_patch->setPadding(corner.width(), corner.height(), corner.width(), corner.height());
        m_patch->update();
    }

    QQuickWindow *m_window;
    QSGNinePatchNode *m_patch;
};

BoxNode::BoxNode()
{
    setFlag(UsePreprocess);
}

BoxNode *BoxNode::create(QQuickWindow *window)
{
    if (window->rendererInterface()->graphicsApi() == QSGRendererInterface::Software) {
        return new Painted(window);
    }
    return new NinePatch(window);
}

void BoxNode::setLook(const BoxStyle &style, QSizeF size, qreal devicePixelRatio)
{
    m_style = style;
    m_size = size;
    m_ratio = devicePixelRatio;
    layAt(sceneTransform());
}

// Before each frame: an item is not notified when an ancestor moves or scales it.
void BoxNode::preprocess()
{
    if (const QTransform toScene = sceneTransform(); toScene != m_laidBy) {
        layAt(toScene);
    }
}

QTransform BoxNode::sceneTransform() const
{
    QMatrix4x4 toScene;
    for (const QSGNode *node = parent(); node; node = node->parent()) {
        if (node->type() == TransformNodeType) {
            toScene = static_cast<const QSGTransformNode *>(node)->matrix() * toScene;
        }
    }
    return toScene.toTransform();
}

void BoxNode::layAt(const QTransform &toScene)
{
    m_laidBy = toScene;
    const QTransform toPixels = toScene * QTransform::fromScale(m_ratio, m_ratio);
    const QRectF exact = toPixels.mapRect(QRectF(QPointF(), m_size));
    const QRect box(exact.topLeft().toPoint(), exact.bottomRight().toPoint() - QPoint(1, 1));
    const QMatrix4x4 fromPixels(QTransform::fromTranslate(box.x(), box.y()) * toPixels.inverted());
    if (matrix() != fromPixels) {
        setMatrix(fromPixels);
    }

    const int margin = shadowMargin(m_style, m_ratio);
    const QRect target = QRect(QPoint(), box.size()).marginsAdded({margin, margin, margin, margin});
    // Where the box lies between pixels, it may be one of them shorter than its image.
    const int extent = margin + cornerExtent(m_style, m_ratio);
    const QSize corner(std::clamp((target.width() - 2) / 2, 0, extent),
                       std::clamp((target.height() - 2) / 2, 0, extent));
    lay({target, corner, plainPart(box)}, m_style.color);
}

// Without a gradient, this is all between the upper and the lower outline, as far as its edges lie between
// two pixels of both kinds: the software renderer repaints in whole logical pixels, and blends the edge of a
// rectangle with what is below it.
QRectF BoxNode::plainPart(QRect box) const
{
    const int step = commonPixels(m_ratio);
    if (!m_style.color.isValid() || m_style.endColor.isValid() || step == 0) {
        return {};
    }
    const int outline = std::max(outlineWidth(m_style, m_ratio), qCeil(m_ratio));
    const int rounding = cornerExtent(m_style, m_ratio) - shadowMargin(m_style, m_ratio);
    const QRectF plain = box.adjusted(rounding, outline, -rounding, -outline);
    const qreal unit = step * m_ratio;
    const QRectF units(QPoint(qCeil(plain.left() / unit), qCeil(plain.top() / unit)),
                       QPoint(qFloor(plain.right() / unit), qFloor(plain.bottom() / unit)));
    if (!units.isValid()) {
        return {};
    }
    // Too little to be seen, but enough that no rounding takes the last pixel from it: what is below such a
    // pixel would be repainted, and it would not.
    constexpr qreal more = 1.0 / 512;
    return QRectF(units.topLeft() * unit - box.topLeft(), units.size() * unit)
        .adjusted(-more, -more, more, more);
}
