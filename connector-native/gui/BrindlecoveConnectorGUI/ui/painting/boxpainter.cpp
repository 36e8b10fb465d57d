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

// One running-average pass down the columns of alpha values, with transparent surroundings. Rows that the
// image lacks are those that it has, in reverse order.
QImage averagedColumns(const QImage &alpha, int rows, int reach)
{
    // Fixed point: a division for each pixel would cost more than everything else here.
    constexpr int shift = 16;
    constexpr quint32 half = 1U << (shift - 1);
    const quint32 share = (1U << shift) / (2 * static_cast<quint32>(reach) + 1);
    const int width = alpha.width();
    const auto row = [&](int y) { return alpha.constScanLine(y < alpha.height() ? y : rows - 1 - y); };

    std::vector<quint32> sums(static_cast<std::size_t>(width));
    quint32 *const sum = sums.data();
    for (int y = 0; y < std::min(reach, rows); ++y) {
        const uchar *const entering = row(y);
        for (int x = 0; x < width; ++x) {
            sum[x] += entering[x];
        }
    }
    const std::vector<uchar> transparent(static_cast<std::size_t>(width));
    QImage averaged(alpha.size(), QImage::Format_Alpha8);
    for (int y = 0; y < alpha.height(); ++y) {
        const uchar *const entering = y + reach < rows ? row(y + reach) : transparent.data();
        const uchar *const leaving = y - reach >= 0 ? row(y - reach) : transparent.data();
        uchar *const average = averaged.scanLine(y);
        for (int x = 0; x < width; ++x) {
            sum[x] += entering[x];
            average[x] = static_cast<uchar>((sum[x] * share + half) >> shift);
            sum[x] -= leaving[x];
        }
    }
    return averaged;
}

// Three averages come very near to a Gaussian.
QImage blurredColumns(QImage alpha, int rows, int reach)
{
    for (int pass = 0; pass < 3; ++pass) {
        alpha = averagedColumns(alpha, rows, reach);
    }
    return alpha;
}

QImage transposed(const QImage &alpha)
{
    QImage result(alpha.size().transposed(), QImage::Format_Alpha8);
    const qsizetype stride = result.bytesPerLine();
    for (int y = 0; y < alpha.height(); ++y) {
        const uchar *const line = alpha.constScanLine(y);
        uchar *const column = result.bits() + y;
        for (int x = 0; x < alpha.width(); ++x) {
            column[x * stride] = line[x];
        }
    }
    return result;
}

// Both halves of an image of the given width, of which one is given and the other mirrors it.
QImage completed(const QImage &leftHalf, int width)
{
    QImage whole(width, leftHalf.height(), QImage::Format_Alpha8);
    for (int y = 0; y < whole.height(); ++y) {
        const uchar *const half = leftHalf.constScanLine(y);
        uchar *const line = whole.scanLine(y);
        std::reverse_copy(half, half + leftHalf.width(), line + width - leftHalf.width());
        std::copy_n(half, leftHalf.width(), line);
    }
    return whole;
}

// The left half of a symmetric image of the given width, blurred by a Gaussian of the given deviation.
// Columns are averaged by whole rows, which the processor does several pixels at a time; hence the
// transposition.
QImage blurred(const QImage &leftHalf, int width, qreal deviation)
{
    const int reach = static_cast<int>(std::lround((std::sqrt(4 * deviation * deviation + 1) - 1) / 2));
    const QImage columns = blurredColumns(leftHalf, leftHalf.height(), reach);
    return transposed(blurredColumns(transposed(columns), width, reach));
}

QImage shadowOf(QSize deviceSize, const BoxStyle &style, qreal ratio)
{
    const int margin = shadowMargin(style, ratio);
    const QSize size = deviceSize.grownBy({margin, margin, margin, margin});
    QImage leftHalf((size.width() + 1) / 2, size.height(), QImage::Format_Alpha8);
    leftHalf.fill(0);
    QPainter painter(&leftHalf);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(margin, margin + style.shadowOffset * ratio);
    painter.fillPath(continuousRoundedRect(QRectF(QPointF(), deviceSize), style.radius * ratio), Qt::black);
    painter.end();
    // A blur radius is two deviations of the Gaussian.
    const QImage alpha =
        completed(blurred(leftHalf, size.width(), style.shadowBlur / 2 * ratio), size.width());

    QImage shadow(size, QImage::Format_ARGB32_Premultiplied);
    shadow.fill(style.shadowColor);
    QPainter tint(&shadow);
    tint.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    tint.drawImage(0, 0, alpha);
    return shadow;
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

// Of three adjacent stretches the starts, and the end of the last.
using Cuts = std::array<int, 4>;

Cuts cutsOf(int start, int length, int fixed)
{
    return {start, start + fixed, start + length - fixed, start + length};
}

QRect cell(const Cuts &x, const Cuts &y, std::size_t column, std::size_t row)
{
    return {QPoint(x[column], y[row]), QPoint(x[column + 1] - 1, y[row + 1] - 1)};
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
    return paints(style.borderColor) ? qRound(style.borderWidth * devicePixelRatio) : 0;
}

int cornerExtent(const BoxStyle &style, qreal devicePixelRatio)
{
    const int rounding = static_cast<int>(std::ceil(cornerReach * style.radius * devicePixelRatio));
    return std::max(rounding, outlineWidth(style, devicePixelRatio)) + shadowMargin(style, devicePixelRatio);
}

QSize stretchableSize(const BoxStyle &style, QSize deviceSize, qreal devicePixelRatio)
{
    const int length = 2 * cornerExtent(style, devicePixelRatio) + 1;
    return deviceSize.boundedTo({length, length});
}

void drawStretched(QPainter &painter, const QRect &target, const QImage &image, QSize corner)
{
    const Cuts sourceX = cutsOf(0, image.width(), corner.width());
    const Cuts sourceY = cutsOf(0, image.height(), corner.height());
    const Cuts targetX = cutsOf(target.x(), target.width(), corner.width());
    const Cuts targetY = cutsOf(target.y(), target.height(), corner.height());
    const QRectF visible = painter.hasClipping() ? painter.clipBoundingRect() : QRectF(target);
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            if (const QRect place = cell(targetX, targetY, column, row); visible.intersects(place)) {
                painter.drawImage(place, image, cell(sourceX, sourceY, column, row));
            }
        }
    }
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
        const QImage shadow = shadowOf(stretchable, style, devicePixelRatio);
        const QSize corner((shadow.width() - 1) / 2, (shadow.height() - 1) / 2);
        drawStretched(painter, image.rect(), shadow, corner);
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
