#include "boxtesting.h"
#include "support/testprogram.h"

#include <QtCore/qmath.h>

namespace {

// How strongly the outline turns at points along one rounded corner, in turns per radius.
QList<qreal> curvatures(const QPainterPath &path, qreal length, qreal step, qreal radius)
{
    const auto direction = [&](qreal at) { return path.angleAtPercent(path.percentAtLength(at)); };
    QList<qreal> result;
    const int steps = static_cast<int>(length / step);
    for (int i = 1; i + 1 < steps; ++i) {
        const qreal at = i * step;
        qreal turned = direction(at + step) - direction(at);
        turned -= 360 * std::round(turned / 360);
        result.append(qDegreesToRadians(std::abs(turned)) / step * radius);
    }
    return result;
}

} // namespace

// The shape of a box, its fill and its outline.
class TestBoxPainter : public QObject
{
    Q_OBJECT

private slots:
    void theImageIsTheBoxAndItsShadow_data()
    {
        QTest::addColumn<qreal>("ratio");
        QTest::newRow("at 1") << 1.0;
        QTest::newRow("at 1.5") << 1.5;
        QTest::newRow("at 2") << 2.0;
    }

    void theImageIsTheBoxAndItsShadow()
    {
        QFETCH(const qreal, ratio);
        const QSize size = (QSizeF(boxSize) * ratio).toSize();
        QCOMPARE(paintBox(outlined(), ratio).size(), size);
        const int margin = shadowMargin(shadowed(), ratio);
        QVERIFY(margin >= qFloor(shadowed().shadowBlur * ratio));
        QCOMPARE(paintBox(shadowed(), ratio).size(), size.grownBy({margin, margin, margin, margin}));
    }

    void theMiddleHasTheFillsColour()
    {
        for (const BoxStyle &style : {outlined(), shadowed()}) {
            const QImage image = paintBox(style, 2);
            QCOMPARE(image.pixelColor(image.rect().center()), fillColor);
        }
    }

    void theOutlineIsOneCrispLine_data()
    {
        QTest::addColumn<qreal>("ratio");
        QTest::newRow("at 1") << 1.0;
        QTest::newRow("at 1.25") << 1.25;
        QTest::newRow("at 1.5") << 1.5;
        QTest::newRow("at 1.75") << 1.75;
        QTest::newRow("at 2") << 2.0;
        QTest::newRow("at 3") << 3.0;
    }

    void theOutlineIsOneCrispLine()
    {
        QFETCH(const qreal, ratio);
        const QImage image = paintBox(outlined(), ratio);
        for (const Qt::Edge edge : edges) {
            const QList<QColor> colors = inwards(image, edge, 6);
            const qsizetype line = colors.count(borderColor);
            QCOMPARE(line, qRound(ratio));
            QCOMPARE(colors.count(fillColor), colors.size() - line);
            QCOMPARE(colors.first(), borderColor);
        }
    }

    void anOutlineCanBeWider()
    {
        BoxStyle style = outlined();
        style.borderWidth = 2;
        for (const qreal ratio : {1.0, 1.25, 1.5, 2.0}) {
            for (const Qt::Edge edge : edges) {
                QCOMPARE(inwards(paintBox(style, ratio), edge, 8).count(borderColor), qRound(2 * ratio));
            }
        }
    }

    void cornersAreEmptyOutside()
    {
        const QImage image = paintBox(outlined(), 1);
        const int right = image.width() - 1;
        const int bottom = image.height() - 1;
        for (const QPoint corner :
             {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)}) {
            QCOMPARE(image.pixelColor(corner).alpha(), 0);
        }
    }

    void cornersRunSmoothlyIntoTheEdges()
    {
        constexpr qreal radius = 100;
        const QPainterPath path = continuousRoundedRect({0, 0, 1000, 1000}, radius);
        const QList<qreal> bends = curvatures(path, 3 * radius, radius / 25, radius);
        const auto highest = std::max_element(bends.cbegin(), bends.cend());
        QVERIFY2(*highest < 3, qPrintable(QString::number(*highest)));
        QVERIFY(*highest > 0.9);
        // From its edge inwards it bends ever more; a circle's corner would jump from straight to one at
        // once.
        constexpr qsizetype entrance = 15;
        QVERIFY(std::is_sorted(bends.cbegin(), bends.cbegin() + entrance));
        QVERIFY(bends.first() < 0.05);
        QVERIFY(bends[entrance] < 0.7);
    }

    void aCornerIsSymmetricAboutItsDiagonal()
    {
        const QPainterPath path = continuousRoundedRect({0, 0, 1000, 1000}, 100);
        // From the left edge to the upper one: where it starts, and three points of each of three curves.
        constexpr int last = 9;
        QVERIFY(path.elementCount() > last);
        for (int i = 0; i <= last; ++i) {
            const QPointF mirrored = QPointF(path.elementAt(last - i)).transposed();
            QCOMPARE(QPointF(path.elementAt(i)), mirrored);
        }
        QCOMPARE(path.elementAt(0).x, 0.0);
    }

    void theOutlineLiesJustInsideTheEdge()
    {
        BoxStyle style = outlined();
        style.radius = 30;
        BoxStyle without = style;
        without.borderColor = Qt::transparent;
        style.borderWidth = 8;
        const QImage image = paintBox(style, 1);
        const QImage plain = paintBox(without, 1);
        // In opaque pixels. Where the corners begin, the two shapes are not quite parallel.
        qreal inside = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                inside += image.pixelColor(x, y).alphaF() - plain.pixelColor(x, y).alphaF();
            }
        }
        QVERIFY2(std::abs(inside) <= 50, qPrintable(QString::number(inside)));
        // Into each corner, the outline is met before the fill, and is as wide as along the edges.
        const QPoint last(image.width() - 1, image.height() - 1);
        for (const bool right : {false, true}) {
            for (const bool bottom : {false, true}) {
                QList<QColor> met;
                for (int i = 0; i < 40; ++i) {
                    const QColor color =
                        image.pixelColor(right ? last.x() - i : i, bottom ? last.y() - i : i);
                    if (color.alpha() == 255) {
                        met.append(color);
                    }
                }
                QVERIFY(distance(met.first(), borderColor) <= 8);
                const qreal width = std::sqrt(2.0) * qreal(met.count(borderColor));
                QVERIFY2(std::abs(width - 8) <= 2, qPrintable(QString::number(width)));
            }
        }
    }

    void tooLargeARadiusIsReduced_data()
    {
        QTest::addColumn<QRectF>("rect");
        QTest::addColumn<qreal>("radius");
        QTest::newRow("wider than high") << QRectF(3, 4, 100, 20) << 18.0;
        QTest::newRow("higher than wide") << QRectF(0, 0, 20, 100) << 500.0;
        QTest::newRow("fitting") << QRectF(0, 0, 100, 100) << 20.0;
        QTest::newRow("none") << QRectF(0, 0, 100, 100) << 0.0;
    }

    void tooLargeARadiusIsReduced()
    {
        QFETCH(const QRectF, rect);
        QFETCH(const qreal, radius);
        const QPainterPath path = continuousRoundedRect(rect, radius);
        const QRectF bounds = path.boundingRect();
        QVERIFY(rect.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(bounds));
        QVERIFY(bounds.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(rect));
        // Corners that overlap would go back and forth.
        QVERIFY(path.length() <= 2 * (rect.width() + rect.height()) + 1e-6);
        for (const QPointF middle : {QPointF(rect.center().x(), rect.top() + 0.01),
                                     QPointF(rect.left() + 0.01, rect.center().y()), rect.center()}) {
            QVERIFY(path.contains(middle));
        }
    }

    void anInvalidColourPaintsNothing_data()
    {
        QTest::addColumn<QColor>("fill");
        QTest::addColumn<QColor>("border");
        QTest::addColumn<QColor>("shadow");
        const QColor none(Qt::transparent);
        QTest::newRow("fill") << QColor() << none << none;
        QTest::newRow("border") << none << QColor() << none;
        QTest::newRow("shadow") << none << none << QColor();
    }

    void anInvalidColourPaintsNothing()
    {
        QFETCH(const QColor, fill);
        QFETCH(const QColor, border);
        QFETCH(const QColor, shadow);
        const BoxStyle style{.color = fill,
                             .endColor = {},
                             .borderColor = border,
                             .radius = 8,
                             .shadowColor = shadow,
                             .shadowBlur = 4};
        const QImage image = paintBox(style, {40, 40}, 1);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                QCOMPARE(image.pixelColor(x, y).alpha(), 0);
            }
        }
    }
};

static const TestClass<TestBoxPainter> testBoxPainter("tst_boxpainter");

#include "tst_boxpainter.moc"
