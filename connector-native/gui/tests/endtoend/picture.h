#pragma once

#include <QColor>
#include <QElapsedTimer>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <QRegion>

#include <optional>

/// A picture of the window, of which ratio pixels make one of the window's own units of length. Pure.
class Picture
{
public:
    Picture(QImage image, qreal ratio);

    [[nodiscard]] QRect rect() const { return m_image.rect(); }
    /// The pixel of a place that is given in the window's own lengths.
    [[nodiscard]] QPoint pixelAt(QPointF place) const;
    [[nodiscard]] int pixels(qreal length) const { return qRound(length * m_ratio); }

    /// Whether the pixel has the colour, give or take what rounding makes of it.
    [[nodiscard]] bool is(QPoint pixel, QColor colour) const;
    [[nodiscard]] QColor colour(QPoint pixel) const { return m_image.pixelColor(pixel); }
    /// How many steps it takes to a pixel of the colour; to the edge of the picture when there is none.
    [[nodiscard]] int stepsTo(QPoint from, QPoint step, QColor colour) const;
    /// How many pixels of the colour there are, from this one on, until another one follows.
    [[nodiscard]] int run(QPoint from, QPoint step, QColor colour) const;
    /// The pixels around all that lies in the part, given in pixels as well, and is clearly not background.
    [[nodiscard]] QRect inkIn(QRect part, QColor background) const;
    /// A pixel of these that the other picture, as large, has in a colour that differs by more.
    [[nodiscard]] std::optional<QPoint> difference(const Picture &other, const QRegion &pixels,
                                                   int tolerance) const;

private:
    QImage m_image;
    qreal m_ratio;
};

/// Whether what is looked at again and again has stopped changing, for longer than a slow renderer takes for
/// a frame.
class Stillness
{
public:
    [[nodiscard]] bool isReachedBy(const QImage &now);

private:
    QImage m_last;
    QElapsedTimer m_sinceChange;
};

/// Whether no component differs by more.
[[nodiscard]] bool areAlike(QColor one, QColor other, int tolerance);
