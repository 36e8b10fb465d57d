#pragma once

#include "ui/painting/boxpainter.h"

#include <QtTest/qtest.h>

#include <algorithm>
#include <cmath>

inline constexpr QSize boxSize(120, 90);
inline const QColor fillColor(240, 245, 250);
inline const QColor borderColor(90, 100, 110);

inline BoxStyle outlined()
{
    return {.color = fillColor,
            .endColor = {},
            .borderColor = borderColor,
            .radius = 14,
            .shadowColor = Qt::transparent};
}

inline BoxStyle shadowed()
{
    return {.color = fillColor,
            .endColor = {},
            .borderColor = Qt::transparent,
            .radius = 18,
            .shadowColor = QColor(0, 0, 0, 128),
            .shadowBlur = 10,
            .shadowOffset = 4};
}

inline int distance(const QColor &one, const QColor &other)
{
    return std::max({std::abs(one.red() - other.red()), std::abs(one.green() - other.green()),
                     std::abs(one.blue() - other.blue()), std::abs(one.alpha() - other.alpha())});
}

// The colours met going from an edge of the image inwards, along the middle of that edge.
inline QList<QColor> inwards(const QImage &image, Qt::Edge edge, int count)
{
    const int right = image.width() - 1;
    const int bottom = image.height() - 1;
    QList<QColor> colors;
    for (int i = 0; i < count; ++i) {
        const QPoint at = edge == Qt::LeftEdge ? QPoint(i, bottom / 2)
            : edge == Qt::RightEdge            ? QPoint(right - i, bottom / 2)
            : edge == Qt::TopEdge              ? QPoint(right / 2, i)
                                               : QPoint(right / 2, bottom - i);
        colors.append(image.pixelColor(at));
    }
    return colors;
}

inline constexpr Qt::Edge edges[] = {Qt::LeftEdge, Qt::RightEdge, Qt::TopEdge, Qt::BottomEdge};

/// The box at a device pixel ratio at which it covers whole pixels.
inline QImage paintBox(const BoxStyle &style, qreal ratio)
{
    return paintBox(style, (QSizeF(boxSize) * ratio).toSize(), ratio);
}
