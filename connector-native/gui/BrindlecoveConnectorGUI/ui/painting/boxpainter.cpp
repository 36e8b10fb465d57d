#include "ui/painting/boxpainter.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

bool paints(const QColor &color)
{
    return color.isValid() && color.alpha() > 0;
}

// How far along its edge a continuous corner reaches, in radii.
constexpr qreal cornerReach = 1.528665;

// Three curves from the vertical edge to the horizontal one, in radii from the corner: two control points
// and an end point each.
constexpr QPointF cornerCurves[3][3] = {
    {{0, 1.088493}, {0, 0.868407}, {0.074911, 0.631494}},
    {{0.169060, 0.372824}, {0.372824, 0.169060}, {0.631494, 0.074911}},
    {{0.868407, 0}, {1.088493, 0}, {cornerReach, 0}},
};

void appendCorner(QPainterPath &path, QPointF corner, QPointF xAxis, QPointF yAxis, bool intoX)
{
    const auto place = [&](QPointF point) { return corner + xAxis * point.x() + yAxis * point.y(); };
    const auto swapped = [&](QPointF point) { return intoX ? point : point.transposed(); };
    const auto at = [&](QPointF point) { return place(swapped(point)); };
    path.lineTo(at({0, cornerReach}));
    for (const auto &curve : cornerCurves) {
        path.cubicTo(at(curve[0]), at(curve[1]), at(curve[2]));
    }
}

// One running-average pass over a line of alpha values, with transparent surroundings.
void averageLine(const uchar *source, uchar *target, int count, qsizetype stride, int reach)
{
    // Fixed point: a division for each pixel would cost more than everything else here.
    constexpr int shift = 16;
    const unsigned share = (1U << shift) / (2 * static_cast<unsigned>(reach) + 1);
    constexpr unsigned half = 1U << (shift - 1);
    unsigned sum = 0;
    for (int i = 0; i < std::min(reach, count); ++i) {
        sum += source[i * stride];
    }
    for (int i = 0; i < count; ++i) {
        sum += i + reach < count ? source[(i + reach) * stride] : 0;
        target[i * stride] = static_cast<uchar>((sum * share + half) >> shift);
        sum -= i - reach >= 0 ? source[(i - reach) * stride] : 0;
    }
}

// Three averages in each direction come very near to a Gaussian of the given deviation.
void blur(QImage &alpha, qreal deviation)
{
    const int reach = static_cast<int>(std::lround((std::sqrt(4 * deviation * deviation + 1) - 1) / 2));
    const int width = alpha.width();
    const int height = alpha.height();
    const qsizetype stride = alpha.bytesPerLine();
    QImage spare(alpha.size(), QImage::Format_Alpha8);
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < height; ++y) {
            averageLine(alpha.constScanLine(y), spare.scanLine(y), width, 1, reach);
        }
        for (int x = 0; x < width; ++x) {
            averageLine(spare.constBits() + x, alpha.bits() + x, height, stride, reach);
        }
    }
}

QImage shadowOf(QSize deviceSize, const BoxStyle &style, qreal ratio)
{
    const int margin = shadowMargin(style, ratio);
    QImage alpha(deviceSize.grownBy({margin, margin, margin, margin}), QImage::Format_Alpha8);
    alpha.fill(0);
    QPainter painter(&alpha);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(margin, margin + style.shadowOffset * ratio);
    painter.fillPath(continuousRoundedRect(QRectF(QPointF(), deviceSize), style.radius * ratio), Qt::black);
    painter.end();
    // A blur radius is two deviations of the Gaussian.
    blur(alpha, style.shadowBlur / 2 * ratio);

    QImage shadow(alpha.size(), QImage::Format_ARGB32_Premultiplied);
    shadow.fill(style.shadowColor);
    QPainter tint(&shadow);
    tint.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    tint.drawImage(0, 0, alpha);
    return shadow;
}

// Enlarges an image by repeating its middle row and column.
void drawStretched(QPainter &painter, const QImage &image, QSize size)
{
    const QSize grown = size - image.size();
    const QPoint middle(image.width() / 2, image.height() / 2);
    const auto stretches = [](int before, int length, int more) {
        const int after = before + 1;
        return std::array{std::array{0, before, 0, before}, std::array{before, 1, before, 1 + more},
                          std::array{after, length - after, after + more, length - after}};
    };
    for (const auto &[sourceX, width, x, stretchedWidth] :
         stretches(middle.x(), image.width(), grown.width())) {
        for (const auto &[sourceY, height, y, stretchedHeight] :
             stretches(middle.y(), image.height(), grown.height())) {
            painter.drawImage(QRect(x, y, stretchedWidth, stretchedHeight), image,
                              QRect(sourceX, sourceY, width, height));
        }
    }
}

QBrush fillOf(const BoxStyle &style, const QRectF &rect)
{
    if (!style.endColor.isValid()) {
        return style.color;
    }
    QLinearGradient gradient(rect.topLeft(), rect.bottomRight());
    gradient.setColorAt(0, style.color);
    gradient.setColorAt(1, style.endColor);
    return gradient;
}

} // namespace

QPainterPath continuousRoundedRect(const QRectF &rect, qreal radius)
{
    const qreal fitting = std::min({radius, rect.width() / 2 / cornerReach, rect.height() / 2 / cornerReach});
    const QPointF right(fitting, 0);
    const QPointF down(0, fitting);
    QPainterPath path;
    path.moveTo(rect.topLeft() + down * cornerReach);
    appendCorner(path, rect.topLeft(), right, down, true);
    appendCorner(path, rect.topRight(), -right, down, false);
    appendCorner(path, rect.bottomRight(), -right, -down, true);
    appendCorner(path, rect.bottomLeft(), right, -down, false);
    path.closeSubpath();
    return path;
}

int shadowMargin(const BoxStyle &style, qreal devicePixelRatio)
{
    const qreal reach = 1.5 * style.shadowBlur + std::abs(style.shadowOffset);
    return paints(style.shadowColor) ? static_cast<int>(std::ceil(reach * devicePixelRatio)) : 0;
}

int outlineWidth(const BoxStyle &style, qreal devicePixelRatio)
{
    return paints(style.borderColor) ? std::max(1, qRound(style.borderWidth * devicePixelRatio)) : 0;
}

int cornerExtent(const BoxStyle &style, qreal devicePixelRatio)
{
    return static_cast<int>(std::ceil(cornerReach * style.radius * devicePixelRatio))
        + shadowMargin(style, devicePixelRatio);
}

QSize stretchableSize(const BoxStyle &style, QSize deviceSize, qreal devicePixelRatio)
{
    const int length = 2 * cornerExtent(style, devicePixelRatio) + 1;
    return deviceSize.boundedTo({length, length});
}

QImage paintBox(const BoxStyle &style, QSize deviceSize, qreal devicePixelRatio)
{
    const int margin = shadowMargin(style, devicePixelRatio);
    const QSize imageSize = deviceSize.grownBy({margin, margin, margin, margin});
    const QRectF rect(QPointF(margin, margin), deviceSize);
    const QPainterPath box = continuousRoundedRect(rect, style.radius * devicePixelRatio);

    QImage image(imageSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    if (margin > 0) {
        const QSize stretchable = stretchableSize(style, deviceSize, devicePixelRatio);
        drawStretched(painter, shadowOf(stretchable, style, devicePixelRatio), imageSize);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    if (paints(style.color)) {
        painter.fillPath(box, fillOf(style, rect));
    }
    if (const qreal line = outlineWidth(style, devicePixelRatio); line > 0) {
        // Whole pixels, drawn half their width inside the edge, stay crisp.
        const QRectF middle = rect.adjusted(line / 2, line / 2, -line / 2, -line / 2);
        const QPainterPath outline =
            continuousRoundedRect(middle, style.radius * devicePixelRatio - line / 2);
        painter.strokePath(outline, QPen(style.borderColor, line));
    }
    return image;
}
