#include "picture.h"

#include <cmath>
#include <utility>

bool Stillness::isReachedBy(const QImage &now)
{
    constexpr int longestFrame = 500;
    if (std::exchange(m_last, now) != now)
        m_sinceChange.start();
    return m_sinceChange.hasExpired(longestFrame);
}

bool areAlike(QColor one, QColor other, int tolerance)
{
    return std::abs(one.red() - other.red()) <= tolerance
        && std::abs(one.green() - other.green()) <= tolerance
        && std::abs(one.blue() - other.blue()) <= tolerance;
}

Picture::Picture(QImage image, qreal ratio)
    : m_image(std::move(image))
    , m_ratio(ratio)
{
}

QPoint Picture::pixelAt(QPointF place) const
{
    return {static_cast<int>(std::floor(place.x() * m_ratio)),
            static_cast<int>(std::floor(place.y() * m_ratio))};
}

bool Picture::is(QPoint pixel, QColor colour) const
{
    constexpr int rounding = 1;
    return rect().contains(pixel) && areAlike(m_image.pixelColor(pixel), colour, rounding);
}

int Picture::stepsTo(QPoint from, QPoint step, QColor colour) const
{
    int steps = 0;
    while (rect().contains(from) && !is(from, colour)) {
        from += step;
        ++steps;
    }
    return steps;
}

int Picture::run(QPoint from, QPoint step, QColor colour) const
{
    int length = 0;
    while (is(from, colour)) {
        from += step;
        ++length;
    }
    return length;
}

QRect Picture::inkIn(QRect part, QColor background) const
{
    constexpr int faint = 48;
    QRect ink;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            if (!areAlike(m_image.pixelColor(x, y), background, faint))
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

std::optional<QPoint> Picture::difference(const Picture &other, const QRegion &pixels, int tolerance) const
{
    for (const QRect &part : pixels) {
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                // Nearly all are equal, and comparing components takes a while.
                if (m_image.pixel(x, y) != other.m_image.pixel(x, y)
                    && !areAlike(colour({x, y}), other.colour({x, y}), tolerance))
                    return QPoint(x, y);
            }
        }
    }
    return std::nullopt;
}
