#include "boxtesting.h"
#include "support/testprogram.h"

namespace {

// The style's shadow with nothing painted over it.
BoxStyle shadowOnly()
{
    BoxStyle style = shadowed();
    style.color = Qt::transparent;
    return style;
}

QImage shadowAlone()
{
    return paintBox(shadowOnly(), 1);
}

} // namespace

// The shadow of a box, and how box and shadow are laid out together.
class TestBoxShadow : public QObject
{
    Q_OBJECT

private slots:
    void theShadowIsMovedDown()
    {
        const QImage shadow = shadowAlone();
        const QImage flipped = shadow.mirrored(false, true);
        const int offset = static_cast<int>(shadowed().shadowOffset);
        const int middle = shadow.width() / 2;
        for (int y = 2 * offset; y < shadow.height(); ++y) {
            QVERIFY(distance(shadow.pixelColor(middle, y), flipped.pixelColor(middle, y - 2 * offset)) <= 1);
        }
    }

    void theShadowFadesOutWithinTheMargin()
    {
        const QImage shadow = shadowAlone();
        for (const Qt::Edge edge : edges) {
            const QList<QColor> colors = inwards(shadow, edge, shadowMargin(shadowed(), 1) + 20);
            QVERIFY(colors.first().alpha() <= 1);
            QVERIFY(std::is_sorted(colors.cbegin(), colors.cend(),
                                   [](const QColor &a, const QColor &b) { return a.alpha() < b.alpha(); }));
            QVERIFY(colors.last().alpha() >= 120);
        }
    }

    void theShadowIsHalfAsStrongAtTheEdge()
    {
        const QImage shadow = shadowAlone();
        const int full = shadowed().shadowColor.alpha();
        const QList<QColor> fromLeft = inwards(shadow, Qt::LeftEdge, shadow.width() / 2);
        const int margin = shadowMargin(shadowed(), 1);
        const int atEdge = (fromLeft[margin - 1].alpha() + fromLeft[margin].alpha()) / 2;
        QVERIFY2(std::abs(atEdge - full / 2) <= 3, qPrintable(QString::number(atEdge)));
        // One deviation out, which is half the blur radius, about a sixth is left.
        const int deviation = static_cast<int>(shadowed().shadowBlur / 2);
        const int out = (fromLeft[margin - deviation - 1].alpha() + fromLeft[margin - deviation].alpha()) / 2;
        QVERIFY2(std::abs(out - full * 0.159) <= 5, qPrintable(QString::number(out)));
    }

    // The averages spread a shadow by whole pixels, and those are the nearest.
    void theShadowIsSpreadByHalfItsBlur()
    {
        constexpr QSize size(300, 300);
        BoxStyle style = shadowOnly();
        style.shadowColor = Qt::black;
        style.radius = 0;
        for (const qreal blur : {5.0, 10.0, 18.0, 30.0}) {
            style.shadowBlur = blur;
            const QImage shadow = paintBox(style, size, 1);
            const QList<QColor> colors = inwards(shadow, Qt::LeftEdge, shadow.width() / 2);
            const qreal edge = shadowMargin(style, 1);
            qreal variance = 0;
            for (qsizetype at = 1; at < colors.size(); ++at) {
                const qreal share = colors[at].alphaF() - colors[at - 1].alphaF();
                variance += share * (qreal(at) - edge) * (qreal(at) - edge);
            }
            const qreal deviation = std::sqrt(variance);
            QVERIFY2(std::abs(deviation - blur / 2) <= 0.5, qPrintable(QString::number(deviation)));
        }
    }

    void theBoxIsSymmetric_data()
    {
        QTest::addColumn<qreal>("ratio");
        QTest::addColumn<bool>("upsideDown");
        QTest::newRow("left to right at 1") << 1.0 << false;
        QTest::newRow("left to right at 1.5") << 1.5 << false;
        QTest::newRow("left to right at 2") << 2.0 << false;
        QTest::newRow("top to bottom at 1") << 1.0 << true;
        QTest::newRow("top to bottom at 2") << 2.0 << true;
    }

    void theBoxIsSymmetric()
    {
        QFETCH(const qreal, ratio);
        QFETCH(const bool, upsideDown);
        BoxStyle style = shadowed();
        style.borderColor = borderColor;
        style.shadowOffset = upsideDown ? 0 : style.shadowOffset;
        const QImage image = paintBox(style, ratio);
        const QImage mirrored = image.mirrored(!upsideDown, upsideDown);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                // Antialiasing may round the two sides differently.
                QVERIFY2(distance(image.pixelColor(x, y), mirrored.pixelColor(x, y)) <= 8,
                         qPrintable(QStringLiteral("at %1, %2").arg(x).arg(y)));
            }
        }
    }

    // The columns are blurred in another way than the rows.
    void aSquareShadowIsTheSameFromAllSides_data()
    {
        QTest::addColumn<int>("length");
        QTest::newRow("of an even length") << 60;
        QTest::newRow("of an odd length") << 61;
        QTest::newRow("of less than the blur") << 5;
    }

    void aSquareShadowIsTheSameFromAllSides()
    {
        QFETCH(const int, length);
        BoxStyle style = shadowOnly();
        style.shadowOffset = 0;
        const QImage shadow = paintBox(style, {length, length}, 1);
        for (int y = 0; y < shadow.height(); ++y) {
            for (int x = 0; x < shadow.width(); ++x) {
                QVERIFY2(distance(shadow.pixelColor(x, y), shadow.pixelColor(y, x)) <= 2,
                         qPrintable(QStringLiteral("at %1, %2").arg(x).arg(y)));
            }
        }
    }

    void aBlurSpreadsTheShadowWithoutLosingAny()
    {
        constexpr QSize size(30, 20);
        BoxStyle style = shadowOnly();
        style.shadowColor = Qt::black;
        style.radius = 0;
        const auto darkness = [](const QImage &shadow) {
            double sum = 0;
            for (int y = 0; y < shadow.height(); ++y) {
                for (int x = 0; x < shadow.width(); ++x) {
                    sum += shadow.pixelColor(x, y).alphaF();
                }
            }
            return sum;
        };
        const double whole = size.width() * size.height();
        for (const qreal blur : {0.0, 4.0, 10.0, 18.0}) {
            style.shadowBlur = blur;
            const double part = darkness(paintBox(style, size, 1)) / whole;
            QVERIFY2(std::abs(part - 1) < 0.03, qPrintable(QString::number(part)));
        }
    }

    void withoutABlurItHasTheShapeOfTheBox()
    {
        for (const int offset : {1, 4}) {
            BoxStyle style = shadowOnly();
            style.shadowBlur = 0;
            style.shadowOffset = offset;
            BoxStyle filled = style;
            filled.color = style.shadowColor;
            filled.shadowColor = Qt::transparent;
            const QImage shadow = paintBox(style, 1);
            const QImage box = paintBox(filled, 1);
            QCOMPARE(shadow.width(), box.width() + 2 * offset);
            for (int y = 0; y < box.height(); ++y) {
                for (int x = 0; x < box.width(); ++x) {
                    const QColor color = shadow.pixelColor(x + offset, y + 2 * offset);
                    QVERIFY2(distance(color, box.pixelColor(x, y)) <= 3,
                             qPrintable(QStringLiteral("at %1, %2").arg(x).arg(y)));
                }
            }
        }
    }

    void beyondTheCornersThePixelsRepeat()
    {
        BoxStyle style = shadowed();
        style.borderColor = borderColor;
        const int extent = cornerExtent(style, 1);
        const int first = shadowMargin(style, 1) + extent;
        const QImage image = paintBox(style, {2 * extent + 40, 2 * extent + 40}, 1);
        for (int across = 0; across < image.width(); ++across) {
            for (int along = first; along < image.width() - first; ++along) {
                QVERIFY(distance(image.pixelColor(along, across), image.pixelColor(first, across)) <= 1);
                QVERIFY(distance(image.pixelColor(across, along), image.pixelColor(across, first)) <= 1);
            }
        }
    }

    void theGradientEndsInTheCorners()
    {
        const QColor from(43, 48, 61);
        const QColor to(31, 33, 43);
        const BoxStyle style{.color = from,
                             .endColor = to,
                             .borderColor = Qt::transparent,
                             .radius = 0,
                             .shadowColor = Qt::transparent};
        const QImage image = paintBox(style, {200, 80}, 1);
        QVERIFY(distance(image.pixelColor(0, 0), from) <= 1);
        QVERIFY(distance(image.pixelColor(199, 79), to) <= 1);
        const QColor middle((from.red() + to.red()) / 2, (from.green() + to.green()) / 2,
                            (from.blue() + to.blue()) / 2);
        QVERIFY(distance(image.pixelColor(100, 40), middle) <= 1);
    }
};

static const TestClass<TestBoxShadow> testBoxShadow("tst_boxshadow");

#include "tst_boxshadow.moc"
