#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>

class QPainter;

/// The look of a box of the window. Lengths are in logical pixels. An invalid colour paints nothing.
struct BoxStyle
{
    QColor color;
    QColor endColor; ///< Makes the fill a gradient, from the top left corner to the bottom right one.
    QColor borderColor; ///< Of an outline just inside the edge.
    qreal radius = 0;
    QColor shadowColor;
    qreal shadowBlur = 0;
    qreal shadowOffset = 0; ///< Downwards.
    qreal borderWidth = 1;

    friend bool operator==(const BoxStyle &, const BoxStyle &) = default;
};

/// A rounded rectangle whose corners run smoothly into its edges; a radius too large for it is reduced.
[[nodiscard]] QPainterPath continuousRoundedRect(const QRectF &rect, qreal radius);

/// How far the shadow reaches beyond the box on every side, in device pixels.
[[nodiscard]] int shadowMargin(const BoxStyle &style, qreal devicePixelRatio);

/// How far the outline reaches inwards, in device pixels.
[[nodiscard]] int outlineWidth(const BoxStyle &style, qreal devicePixelRatio);

/// The length of an edge, from each corner, that cannot be made by repeating a pixel. Device pixels.
[[nodiscard]] int cornerExtent(const BoxStyle &style, qreal devicePixelRatio);

/// The smallest box whose middle row and column can be repeated to make one of the given size. Both are in
/// device pixels.
[[nodiscard]] QSize stretchableSize(const BoxStyle &style, QSize deviceSize, qreal devicePixelRatio);

/// Paints an image whose corners, of the given size, are as they are, its edges and middle stretched between
/// them.
void drawStretched(QPainter &painter, const QRect &target, const QImage &image, QSize corner);

/// A box of so many device pixels with its shadow: an image larger by the shadow's margin on every side.
/// Any thread.
[[nodiscard]] QImage paintBox(const BoxStyle &style, QSize deviceSize, qreal devicePixelRatio);
