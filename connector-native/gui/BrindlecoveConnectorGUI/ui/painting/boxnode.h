#pragma once

#include "ui/painting/boxpainter.h"

#include <QSGTransformNode>

class QQuickWindow;

/// Shows the image of a box: its corners and outline as painted, edges and middle stretched, each pixel of
/// the image on one of the screen, wherever ancestors place the box and however they scale it. Render thread.
class BoxNode : public QSGTransformNode
{
public:
    /// A node for the window's renderer; the caller owns it.
    [[nodiscard]] static BoxNode *create(QQuickWindow *window);

    /// What `paintBox()` made of the look, of the box's own size or of its stretchable one.
    virtual void setImage(const QImage &image) = 0;
    /// The size is in logical pixels.
    void setLook(const BoxStyle &style, QSizeF size, qreal devicePixelRatio);

    void preprocess() override;

protected:
    /// In device pixels from the box's corner, which are the coordinates of the node's children.
    struct Layout
    {
        QRect target;
        QSize corner; ///< Is not stretched.
        QRectF plain; ///< What has the fill's colour alone; in the scene, whole logical pixels.

        friend bool operator==(const Layout &, const Layout &) = default;
    };

    BoxNode();

    virtual void lay(const Layout &layout, const QColor &fill) = 0;

private:
    class Frame;
    class Painted;
    class NinePatch;

    [[nodiscard]] QTransform sceneTransform() const;
    void layAt(const QTransform &toScene);
    [[nodiscard]] QRectF plainPart(QRect box) const;

    BoxStyle m_style;
    QSizeF m_size;
    qreal m_ratio = 1;
    QTransform m_laidBy;
};
