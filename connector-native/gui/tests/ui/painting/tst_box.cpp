#include "support/testprogram.h"
#include "ui/painting/box.h"
#include "windowtesting.h"

#include <QtGui/qpainter.h>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

bool isLike(const QColor &one, const QColor &other)
{
    return std::abs(one.red() - other.red()) <= 4 && std::abs(one.blue() - other.blue()) <= 4;
}

// Where a repainted part begins inside a box, a seam may be blended otherwise by one level of a colour.
bool isNearly(const QImage &one, const QImage &other)
{
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y);
            const QColor b = other.pixelColor(x, y);
            if (std::max({qAbs(a.red() - b.red()), qAbs(a.green() - b.green()), qAbs(a.blue() - b.blue())})
                > 1) {
                return false;
            }
        }
    }
    return one.size() == other.size();
}

class WatchedBox : public Box
{
public:
    using Box::Box;
    using Box::itemChange;

    int layouts = 0;

protected:
    void updatePolish() override
    {
        ++layouts;
        Box::updatePolish();
    }
};

} // namespace

// What a box looks like in a window, at whatever device pixel ratio the test is run with.
class TestBox : public QObject
{
    Q_OBJECT

    static BoxStyle usualLook(const QColor &endColor = {})
    {
        return {QColor(240, 245, 250), endColor, QColor(90, 100, 110), 14, QColor(0, 0, 0, 60), 10, 4};
    }

    static Box *addBox(TestWindow &window, const QRectF &place)
    {
        const BoxStyle look = usualLook();
        auto *box = new Box(window.contentItem());
        box->setPosition(place.topLeft());
        box->setSize(place.size());
        box->setProperty("color", look.color);
        box->setProperty("borderColor", look.borderColor);
        box->setProperty("radius", look.radius);
        box->setProperty("shadowColor", look.shadowColor);
        box->setProperty("shadowBlur", look.shadowBlur);
        box->setProperty("shadowOffset", look.shadowOffset);
        return box;
    }

    // A box at (40, 40) in a white window looks as its style is painted.
    static void verifyLook(QQuickWindow &window, QSize size, const BoxStyle &style)
    {
        const qreal ratio = window.effectiveDevicePixelRatio();
        const QImage shown = settled(window);
        const int margin = shadowMargin(style, ratio);
        QImage expected(shown.size(), QImage::Format_RGB32);
        expected.fill(Qt::white);
        QPainter painter(&expected);
        const QPoint corner = (QPointF(40, 40) * ratio).toPoint() - QPoint(margin, margin);
        painter.drawImage(corner, paintBox(style, (QSizeF(size) * ratio).toSize(), ratio));
        painter.end();

        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                if (!isLike(shown.pixelColor(x, y), expected.pixelColor(x, y))) {
                    QFAIL(qPrintable(
                        QStringLiteral("at %1, %2: %3 instead of %4")
                            .arg(x)
                            .arg(y)
                            .arg(shown.pixelColor(x, y).name(), expected.pixelColor(x, y).name())));
                }
            }
        }
    }

private slots:
    void theWindowHasTheRatioAskedFor()
    {
        TestWindow window;
        QVERIFY(window.isReady());
        const QByteArray factor = qgetenv("QT_SCALE_FACTOR");
        QCOMPARE(window.effectiveDevicePixelRatio(), factor.isEmpty() ? 1.0 : factor.toDouble());
    }

    void aStretchedBoxLooksLikeAPaintedOne_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QColor>("endColor");
        const QColor opaque(240, 245, 250);
        QTest::newRow("wide") << QSize(300, 120) << opaque << QColor();
        QTest::newRow("high") << QSize(120, 200) << opaque << QColor();
        QTest::newRow("lower than its corners") << QSize(200, 24) << opaque << QColor();
        QTest::newRow("smaller than its corners") << QSize(30, 30) << opaque << QColor();
        QTest::newRow("gradient") << QSize(240, 100) << opaque << QColor(31, 33, 43);
        QTest::newRow("translucent") << QSize(240, 101) << QColor(26, 31, 41, 128) << QColor();
    }

    void aStretchedBoxLooksLikeAPaintedOne()
    {
        QFETCH(const QSize, size);
        QFETCH(const QColor, color);
        QFETCH(const QColor, endColor);
        BoxStyle look = usualLook(endColor);
        look.color = color;
        // What shines through a box is not its shadow.
        look.shadowColor = QColor(0, 0, 0, color.alpha() == 255 ? 60 : 0);
        TestWindow window;
        Box *box = addBox(window, {QPointF(40, 40), QSizeF(size)});
        box->setProperty("color", color);
        box->setProperty("endColor", endColor);
        box->setProperty("shadowColor", look.shadowColor);
        QVERIFY(window.isReady());
        verifyLook(window, size, look);
    }

    void unlessToldItHasSquareCornersAThinOutlineAndNoShadow()
    {
        constexpr QSize size(100, 60);
        TestWindow window;
        Box box(window.contentItem());
        box.setPosition({40, 40});
        box.setSize(size);
        const QColor outline(90, 100, 110);
        const QColor shadow(0, 0, 0, 200);
        box.setProperty("color", QColor(Qt::yellow));
        box.setProperty("borderColor", outline);
        box.setProperty("shadowColor", shadow);
        QVERIFY(window.isReady());
        BoxStyle style;
        style.color = Qt::yellow;
        style.borderColor = outline;
        style.shadowColor = shadow;
        verifyLook(window, size, style);
        const qreal ratio = window.effectiveDevicePixelRatio();
        const QPoint corner = (QPointF(40, 40) * ratio).toPoint();
        const QImage shown = settled(window);
        QCOMPARE(shown.pixelColor(corner), outline);
        QCOMPARE(shown.pixelColor(corner - QPoint(1, 0)), QColor(Qt::white));
        QCOMPARE(shown.pixelColor(corner - QPoint(0, 1)), QColor(Qt::white));
    }

    void aResizedBoxIsPaintedAnew_data()
    {
        QTest::addColumn<QColor>("endColor");
        QTest::newRow("plain") << QColor();
        QTest::newRow("gradient") << QColor(31, 33, 43);
    }

    void aResizedBoxIsPaintedAnew()
    {
        QFETCH(const QColor, endColor);
        TestWindow window;
        Box *box = addBox(window, {40, 40, 200, 100});
        box->setProperty("endColor", endColor);
        QVERIFY(window.isReady());
        (void)settled(window);
        box->setSize({240, 160});
        verifyLook(window, {240, 160}, usualLook(endColor));
    }

    void aBoxThatIsShownLaterIsPainted()
    {
        TestWindow window;
        Box *box = addBox(window, {40, 40, 200, 100});
        box->setVisible(false);
        QVERIFY(window.isReady());
        (void)settled(window);
        box->setVisible(true);
        verifyLook(window, {200, 100}, usualLook());
    }

    void aBoxThatWasEmptyForAWhileIsPaintedAgain()
    {
        TestWindow window;
        Box *box = addBox(window, {40, 40, 200, 100});
        QVERIFY(window.isReady());
        const QImage before = settled(window);
        box->setHeight(0);
        QVERIFY(settled(window) != before);
        box->setHeight(100);
        QCOMPARE(settled(window), before);
    }

    void aGradientThatWasPressedIsAsBefore()
    {
        TestWindow window;
        Box *box = addBox(window, {40, 40, 200, 100});
        box->setProperty("endColor", QColor(31, 33, 43));
        QVERIFY(window.isReady());
        const QImage before = settled(window);
        box->setScale(0.8);
        QVERIFY(settled(window) != before);
        box->setScale(1);
        QVERIFY(isNearly(settled(window), before));
    }

    void aBoxBetweenPixelsIsCrisp_data()
    {
        QTest::addColumn<QRectF>("place");
        QTest::newRow("on whole pixels") << QRectF(40, 40, 200, 100);
        QTest::newRow("at a third") << QRectF(40.333, 41.667, 200, 100);
        QTest::newRow("at a half") << QRectF(40.5, 41.5, 200, 100);
        QTest::newRow("a broken width") << QRectF(40, 40, 200.4, 100.7);
        QTest::newRow("an odd place and size") << QRectF(41, 43, 201, 99);
    }

    void aBoxBetweenPixelsIsCrisp()
    {
        QFETCH(const QRectF, place);
        TestWindow window;
        Box *box = addBox(window, place);
        box->setProperty("shadowColor", QColor(Qt::transparent));
        QVERIFY(window.isReady());
        const QImage image = settled(window);
        const QPoint middle = (place.center() * window.effectiveDevicePixelRatio()).toPoint();
        // White, outline and fill, and then the same the other way round: nothing in between.
        const QStringList expected{u"#ffffff"_s, u"#5a646e"_s, u"#f0f5fa"_s, u"#5a646e"_s, u"#ffffff"_s};
        QStringList across;
        for (int x = 0; x < image.width(); ++x) {
            across.append(image.pixelColor(x, middle.y()).name());
        }
        across.erase(std::unique(across.begin(), across.end()), across.end());
        QCOMPARE(across, expected);
        QStringList down;
        for (int y = 0; y < image.height(); ++y) {
            down.append(image.pixelColor(middle.x(), y).name());
        }
        down.erase(std::unique(down.begin(), down.end()), down.end());
        QCOMPARE(down, expected);
    }

    void aPressedBoxIsWhole_data()
    {
        QTest::addColumn<QRectF>("place");
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<QColor>("endColor");
        QTest::newRow("pressed") << QRectF(40, 40, 202, 38) << 0.97 << QColor();
        QTest::newRow("between pixels") << QRectF(41.333, 43.5, 187, 37) << 0.97 << QColor();
        QTest::newRow("being released") << QRectF(40, 40, 202, 38) << 0.9834 << QColor();
        QTest::newRow("with a gradient") << QRectF(40, 40, 202, 38) << 0.97 << QColor(240, 245, 250);
    }

    // Its parent is what is pressed, as a button is.
    void aPressedBoxIsWhole()
    {
        QFETCH(const QRectF, place);
        QFETCH(const qreal, scale);
        QFETCH(const QColor, endColor);
        constexpr qreal radius = 6;
        TestWindow window;
        QQuickItem *button = addItem(window.contentItem(), place);
        Box *box = addBox(window, {QPointF(), place.size()});
        box->setParentItem(button);
        box->setProperty("shadowColor", QColor(Qt::transparent));
        box->setProperty("endColor", endColor);
        box->setProperty("radius", radius);
        QVERIFY(window.isReady());
        const QImage rest = settled(window);
        button->setScale(scale);
        button->setOpacity(0.9);
        const QImage image = settled(window);

        const qreal ratio = window.effectiveDevicePixelRatio();
        const QSizeF size = place.size() * scale * ratio;
        const QPoint center = (place.center() * ratio).toPoint();
        const int line = std::max(1, qRound(ratio));
        const QColor outline = QColor(107, 116, 125);
        const QColor fill = QColor(242, 246, 251);
        const auto verifyAlong = [&](QPoint first, QPoint step, int count, qreal length) {
            QList<std::pair<QColor, int>> runs;
            for (int i = 0; i < count; ++i) {
                const QColor color = image.pixelColor(first + i * step);
                if (runs.isEmpty() || !isLike(runs.constLast().first, color)) {
                    runs.append({color, 0});
                }
                ++runs.last().second;
            }
            QCOMPARE(runs.size(), 5);
            QVERIFY(isLike(runs[1].first, outline) && isLike(runs[3].first, outline));
            QVERIFY(isLike(runs[2].first, fill));
            QCOMPARE(runs[1].second, line);
            QCOMPARE(runs[3].second, line);
            QVERIFY(std::abs(runs[2].second + 2 * line - length) <= 1);
        };
        // Each row and column that meets no corner.
        const int corner = static_cast<int>(std::ceil(radius * 1.53 * ratio)) + 1;
        const QSize free = (size / 2).toSize() - QSize(corner, corner);
        for (int y = center.y() - free.height(); y <= center.y() + free.height(); ++y) {
            verifyAlong({0, y}, {1, 0}, image.width(), size.width());
        }
        for (int x = center.x() - free.width(); x <= center.x() + free.width(); ++x) {
            verifyAlong({x, 0}, {0, 1}, image.height(), size.height());
        }

        button->setScale(1);
        button->setOpacity(1);
        QVERIFY(isNearly(settled(window), rest));
    }

    void aBoxIsAsBeforeWhereSomethingPassed_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QColor>("endColor");
        QTest::addColumn<QRectF>("place");
        QTest::addColumn<qreal>("z");
        const QColor none;
        const QColor opaque(240, 245, 250);
        const QColor translucent(26, 31, 41, 128);
        constexpr qreal above = 1;
        constexpr qreal below = -1;
        QTest::newRow("upon its middle") << opaque << none << QRectF(113, 77, 41, 23) << above;
        QTest::newRow("upon its corner") << opaque << none << QRectF(31, 33, 37, 29) << above;
        QTest::newRow("upon its edge") << opaque << none << QRectF(225.5, 71.5, 31, 43) << above;
        QTest::newRow("upon its shadow") << opaque << none << QRectF(97, 133, 41, 17) << above;
        QTest::newRow("upon all of it") << opaque << none << QRectF(20, 20, 260, 160) << above;
        QTest::newRow("upon a translucent one's edge")
            << translucent << none << QRectF(101, 31, 53, 27) << above;
        QTest::newRow("below its corner") << opaque << none << QRectF(31, 33, 37, 29) << below;
        QTest::newRow("below all of it") << opaque << none << QRectF(20, 20, 260, 160) << below;
        QTest::newRow("below a translucent one") << translucent << none << QRectF(20, 20, 260, 160) << below;
        QTest::newRow("upon a gradient") << opaque << QColor(31, 33, 43) << QRectF(20, 20, 99, 99) << above;
        QTest::newRow("below a gradient") << opaque << QColor(31, 33, 43) << QRectF(20, 20, 99, 99) << below;
    }

    void aBoxIsAsBeforeWhereSomethingPassed()
    {
        QFETCH(const QColor, color);
        QFETCH(const QColor, endColor);
        QFETCH(const QRectF, place);
        QFETCH(const qreal, z);
        // Single precision, in which scenes are laid out, has no such numbers.
        for (const QPointF corner : {QPointF(40, 40), QPointF(40.333, 40.667), QPointF(33.1, 37.7)}) {
            TestWindow window;
            Box *box = addBox(window, {corner, QSizeF(200, 100)});
            box->setProperty("color", color);
            box->setProperty("endColor", endColor);
            QVERIFY(window.isReady());
            Box other(window.contentItem());
            other.setPosition(place.topLeft());
            other.setSize(place.size());
            other.setZ(z);
            const QImage before = settled(window);
            other.setProperty("color", QColor(Qt::red));
            QVERIFY(settled(window) != before);
            other.setProperty("color", QColor());
            QCOMPARE(settled(window), before);
        }
    }

    // Painted twice it would be less translucent.
    void aPressedBoxIsPaintedOnce()
    {
        TestWindow window;
        Box *box = addBox(window, {40, 40, 200, 100});
        box->setProperty("color", QColor(40, 50, 60));
        QVERIFY(window.isReady());
        (void)settled(window);
        box->setScale(0.97);
        box->setOpacity(0.5);
        const QImage pressed = settled(window);
        const QPointF middle = QPointF(140, 90) * window.effectiveDevicePixelRatio();
        QVERIFY(isLike(pressed.pixelColor(middle.toPoint()), QColor(147, 152, 157)));
    }

    void aNewColourIsShown_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QPointF>("place");
        QTest::newRow("fill") << QByteArray("color") << QPointF(140, 90);
        QTest::newRow("outline") << QByteArray("borderColor") << QPointF(40, 90);
    }

    void aNewColourIsShown()
    {
        QFETCH(const QByteArray, property);
        QFETCH(const QPointF, place);
        TestWindow window;
        Box *box = addBox(window, {40, 40, 200, 100});
        QVERIFY(window.isReady());
        (void)settled(window);
        box->setProperty(property.constData(), QColor(10, 200, 30));
        const QImage image = settled(window);
        QCOMPARE(image.pixelColor((place * window.effectiveDevicePixelRatio()).toPoint()),
                 QColor(10, 200, 30));
    }

    // A window that is moved to another screen keeps its size.
    void anotherRatioAloneIsFollowed()
    {
        TestWindow window;
        WatchedBox box(window.contentItem());
        box.setSize({200, 100});
        QVERIFY(window.isReady());
        (void)settled(window);
        box.layouts = 0;
        (void)settled(window);
        QCOMPARE(box.layouts, 0);
        box.itemChange(QQuickItem::ItemDevicePixelRatioHasChanged, window.effectiveDevicePixelRatio());
        (void)settled(window);
        QCOMPARE(box.layouts, 1);
    }

    void anEmptyBoxPaintsNothing()
    {
        TestWindow window;
        Box *box = addBox(window, {40, 40, 200, 100});
        QVERIFY(window.isReady());
        (void)settled(window);
        box->setHeight(0);
        QImage blank = settled(window);
        const QImage image = blank.copy();
        blank.fill(Qt::white);
        QCOMPARE(image, blank);
    }
};

static const TestClass<TestBox> testBox("tst_box");

#include "tst_box.moc"
