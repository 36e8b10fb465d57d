#include "desktop.h"
#include "picture.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

constexpr QColor pageTop(240, 245, 252);
constexpr QColor pageBottom(235, 240, 250);
constexpr QColor tileStart(43, 48, 61);
constexpr QColor tileMiddle(37, 41, 52);
constexpr QColor tileEnd(31, 33, 43);
constexpr QColor cardBorder(214, 222, 235);
constexpr QColor buttonBorder(199, 207, 219);
constexpr QColor panel(247, 250, 255);
constexpr QColor panelBorder(217, 224, 237);

// Nine tenths of the outline on white.
constexpr QColor outlinePressed(205, 212, 223);

constexpr qreal pagePadding = 28;
constexpr qreal sectionSpacing = 20;
constexpr qreal tileGap = 12;
constexpr qreal tilePadding = 18;
constexpr qreal cardPadding = 20;
// On the page right of the middle: there is no text there between the tiles and the second card's top.
constexpr qreal clearColumn = 700;

constexpr QPoint right(1, 0);
constexpr QPoint down(0, 1);
constexpr QPoint up(0, -1);

bool isDark(QColor colour)
{
    return colour.lightness() < 110;
}

} // namespace

/// The look of the window, pixel by pixel, at several device pixel ratios and on both renderers.
class TestLooks : public WindowTest
{
    Q_OBJECT

    void startAt(const QString &scale, const QString &renderer)
    {
        renew();
        application().setEnvironment(u"QT_SCALE_FACTOR"_s, scale);
        if (renderer == u"opengl"_s)
            application().setEnvironment(u"QSG_RHI_BACKEND"_s, renderer);
        start();
        QFile maps(u"/proc/%1/maps"_s.arg(application().processId()));
        QVERIFY(maps.open(QIODevice::ReadOnly));
        QCOMPARE(maps.readAll().contains("libqxcb-glx-integration.so"), renderer == u"opengl"_s);
    }

    void openDetails()
    {
        // By no mouse, which would be over something then.
        QVERIFY(window().button(u"Show details"_s).act(u"Press"_s));
        QTRY_VERIFY(!window().outputBelow(u"Binding result"_s).isNull());
    }

    /// The window once the button that was pressed last looks as it did before, and moves no longer.
    [[nodiscard]] Picture takePicture(const QString &scale) const
    {
        constexpr int patience = 20000;
        Stillness stillness;
        Picture picture({}, scale.toDouble());
        const QRectF box = place(window().button(u"Hide details"_s));
        const QPoint edge(picture.pixels(box.center().x()), picture.pixels(box.top()));
        const auto isStill = [&] {
            const QImage now = desktop::pictureOf(window().id());
            picture = {now, scale.toDouble()};
            return stillness.isReachedBy(now) && picture.is(edge, buttonBorder);
        };
        static_cast<void>(QTest::qWaitFor(isStill, patience));
        return picture;
    }

    [[nodiscard]] QRectF place(const AccessibleNode &node) const
    {
        return QRectF(node.extents()).translated(-window().rect().topLeft());
    }
    /// The tiles' common top, and the bottom of them.
    [[nodiscard]] qreal tileTop() const { return place(window().label(u"Connector"_s)).top() - tilePadding; }
    [[nodiscard]] qreal tileBottom() const
    {
        return place(window().label(u"not bound"_s)).bottom() + tilePadding;
    }

    void verifyPage(const Picture &picture) const
    {
        QVERIFY(picture.is({0, 0}, pageTop));
        QVERIFY(picture.is(picture.rect().bottomLeft(), pageBottom));
    }

    void verifyTiles(const Picture &picture) const
    {
        const qreal width = (window().rect().width() - 2 * pagePadding - 2 * tileGap) / 3;
        const qreal middle = (tileTop() + tileBottom()) / 2;
        for (int tile = 0; tile < 3; ++tile) {
            const qreal left = pagePadding + tile * (width + tileGap);
            const QPoint first(picture.pixels(left), picture.pixels(middle));
            const QPoint last(picture.pixels(left + width) - 1, picture.pixels(middle));
            QVERIFY(!isDark(picture.colour(first - right)) && isDark(picture.colour(first)));
            QVERIFY(isDark(picture.colour(last)) && !isDark(picture.colour(last + right)));
        }
        const QPointF corner(pagePadding, tileTop());
        QVERIFY(!isDark(picture.colour(picture.pixelAt(corner + QPointF(4, 4)))));
        QVERIFY(isDark(picture.colour(picture.pixelAt(corner + QPointF(7, 7)))));
        QVERIFY(areAlike(picture.colour(picture.pixelAt(corner + QPointF(9, 9))), tileStart, 2));
        const QPointF center(pagePadding + width / 2, middle);
        QVERIFY(areAlike(picture.colour(picture.pixelAt(center)), tileMiddle, 2));
        const QPointF end(pagePadding + width, tileBottom());
        QVERIFY(areAlike(picture.colour(picture.pixelAt(end - QPointF(9, 9))), tileEnd, 2));
    }

    void verifyCards(const Picture &picture, int line) const
    {
        const QPoint belowTiles = picture.pixelAt({clearColumn, tileBottom() + 2});
        const QPoint top = belowTiles + down * picture.stepsTo(belowTiles, down, cardBorder);
        QVERIFY(qAbs(top.y() - picture.pixels(tileBottom() + sectionSpacing)) <= 1);
        QCOMPARE(picture.run(top, down, cardBorder), line);
        QVERIFY(picture.run(top + down * line, down, Qt::white) >= picture.pixels(cardPadding) - line);

        const qreal next = place(window().label(u"Exchange API"_s)).top() - cardPadding;
        const QPoint above = picture.pixelAt({clearColumn, next - 2});
        const int gap = picture.stepsTo(above, up, cardBorder) + picture.stepsTo(above, down, cardBorder) - 1;
        QVERIFY(qAbs(gap - picture.pixels(sectionSpacing)) <= 1);

        const QPoint beside(picture.pixels(pagePadding), picture.pixels(next + 60));
        QCOMPARE(picture.run(beside, right, cardBorder), line);
        QVERIFY(picture.is(beside + right * line, Qt::white));
        QVERIFY(!picture.is(picture.pixelAt({pagePadding + 4, next + 4}), Qt::white));
        QVERIFY(picture.is(picture.pixelAt({pagePadding + 9, next + 9}), Qt::white));
    }

    /// Its colours, its outline of this many pixels, and how far its title stands from its sides.
    void verifyButton(const Picture &picture, const AccessibleNode &button, QColor fill, int outline,
                      qreal radius, qreal sidePadding) const
    {
        constexpr qreal bearing = 2;
        const QRectF box = place(button);
        const QPoint left(picture.pixels(box.left()), picture.pixels(box.center().y()));
        QCOMPARE(picture.run(left, right, buttonBorder), outline);
        QVERIFY(areAlike(picture.colour(left + right * outline), fill, 4));
        // Its corners are round.
        const QPoint corner(left.x(), picture.pixels(box.top()));
        const int round = picture.stepsTo(corner, right, outline > 0 ? buttonBorder : fill);
        QVERIFY2(round >= picture.pixels(radius / 2) && round <= picture.pixels(radius * 1.5),
                 qPrintable(QString::number(round)));

        const QRect inside(picture.pixelAt(box.topLeft() + QPointF(5, 5)),
                           picture.pixelAt(box.bottomRight() - QPointF(5, 5)));
        const QRect ink = picture.inkIn(inside, fill);
        const int most = picture.pixels(sidePadding + bearing);
        const int least = picture.pixels(sidePadding) - 1;
        const int before = ink.left() - left.x();
        const int after = picture.pixels(box.right()) - 1 - ink.right();
        QVERIFY2(before >= least && before <= most, qPrintable(QString::number(before)));
        QVERIFY2(after >= least && after <= most, qPrintable(QString::number(after)));
        constexpr qreal padding = 10;
        QCOMPARE(box.height(), place(window().label(u"Quick state"_s)).height() + 2 * padding);
    }

    void verifyButtons(const Picture &picture, int line) const
    {
        verifyButton(picture, window().button(u"Claim token"_s), accent, 0, 10, 16);
        verifyButton(picture, window().button(u"Check server"_s), Qt::white, line, 10, 16);
        verifyButton(picture, window().tab(u"Bybit"_s), accent, 0, 12, 14);
        verifyButton(picture, window().tab(u"Gate"_s), Qt::white, line, 12, 14);
        // A tab's shadow falls on the card, a button's is cut off at its own edge.
        const auto below = [&](const AccessibleNode &node) {
            const QRectF box = place(node);
            return QPoint(picture.pixels(box.center().x()), picture.pixels(box.bottom() + 1));
        };
        QVERIFY(!picture.is(below(window().tab(u"Bybit"_s)), Qt::white));
        QVERIFY(picture.is(below(window().button(u"Claim token"_s)), Qt::white));
        QVERIFY(picture.is(below(window().button(u"Check server"_s)), Qt::white));
    }

    void verifyPanel(const Picture &picture, int line) const
    {
        constexpr qreal padding = 12;
        constexpr qreal height = 110;
        const QRectF text = place(window().outputBelow(u"Binding result"_s));
        const QPointF corner = text.topLeft() - QPointF(padding, padding);
        const QPoint top(picture.pixels(text.left() + 20), picture.pixels(corner.y()));
        QCOMPARE(picture.run(top, down, panelBorder), line);
        QVERIFY(picture.is(top + down * line, panel));
        const QPoint bottom = top + down * (picture.pixels(height + 2 * padding) - 1);
        QCOMPARE(picture.run(bottom, up, panelBorder), line);
        QVERIFY(picture.is(bottom + up * line, panel));
        QVERIFY(picture.is(bottom + down, Qt::white));
    }

    [[nodiscard]] QPoint pixelOf(QPointF placeInWindow, qreal scale) const
    {
        return ((placeInWindow + window().rect().topLeft()) * scale).toPoint();
    }

    /// The first pixel that a pressed button has otherwise than it should; empty when there is none. Its
    /// place at rest is given in pixels.
    [[nodiscard]] static QString pressedFault(const Picture &picture, QRectF atRest, qreal scale, QColor fill,
                                              QColor outline)
    {
        QRectF pressed(QPointF(), atRest.size() * 0.97);
        pressed.moveCenter(atRest.center());
        const int line = qRound(scale);
        const int reach = qCeil(10 * 1.53 * scale);
        const QRectF whole = pressed.adjusted(1 + line, 1 + line, -1 - line, -1 - line);
        const QRectF label = pressed.adjusted(14 * scale, 9 * scale, -14 * scale, -9 * scale);
        const QRectF besideCorners = pressed.adjusted(0, reach, 0, -reach);
        const QRectF betweenCorners = pressed.adjusted(reach, 0, -reach, 0);
        const QRect around = pressed.adjusted(-4, -4, 4, 4).toRect();
        constexpr int tolerance = 4;
        for (int y = around.top(); y <= around.bottom(); ++y) {
            for (int x = around.left(); x <= around.right(); ++x) {
                const QRectF pixel(x, y, 1, 1);
                const bool isFill = whole.contains(pixel) && !label.intersects(pixel)
                    && (besideCorners.contains(pixel) || betweenCorners.contains(pixel));
                const bool isCard = !pressed.adjusted(-1, -1, 1, 1).intersects(pixel);
                const QColor expected = isFill ? fill : QColor(Qt::white);
                if ((isFill || isCard) && !areAlike(picture.colour({x, y}), expected, tolerance))
                    return u"%1 at %2, %3"_s.arg(picture.colour({x, y}).name()).arg(x).arg(y);
            }
        }
        // Its outline is crisp, and as wide as at rest. Corners that meet may leave it a shade lighter.
        const QPoint above(around.left() + reach + 6, around.top());
        const QPoint beside(around.left(), around.center().y());
        for (const auto &[start, step] : {std::pair(above, down), std::pair(beside, right)}) {
            const QPoint first = start + step * picture.run(start, step, Qt::white);
            int width = 0;
            while (width <= line && areAlike(picture.colour(first + width * step), outline, tolerance))
                ++width;
            if (width == 0)
                return u"an edge of %1"_s.arg(picture.colour(first).name());
            if (outline != fill && width != line)
                return u"an outline of %1 pixels"_s.arg(width);
        }
        return {};
    }

    /// Presses the button, and looks at it pixel by pixel while its command blocks the window.
    void verifyPressed(const QString &title, const QString &command, qreal scale, QColor fill, QColor outline)
    {
        constexpr int slowRenderer = 30000;
        QVERIFY(application().setFaults("ONLY=" + command.toLatin1() + "\nDELAY_MS=60000\n"));
        const QRectF box = place(window().button(title));
        const QRectF atRest(box.topLeft() * scale, box.size() * scale);
        desktop::clickAt(pixelOf(box.center(), scale));
        QTRY_COMPARE_WITH_TIMEOUT(application().calls().constLast().value(0), command, slowRenderer);
        const auto fault = [&] {
            const Picture picture(desktop::pictureOf(window().id()), scale);
            return pressedFault(picture, atRest, scale, fill, outline);
        };
        // A renderer with a thread of its own may still be at it.
        QTRY_COMPARE(fault(), QString());
    }

    /// What may differ from renderer to renderer: how glyphs, and the round ends of scroll bars, are
    /// smoothed.
    [[nodiscard]] QList<QRect> smoothedParts(const Picture &picture) const
    {
        constexpr qreal scrollBar = 14;
        const QRectF page(QPointF(), window().rect().size());
        QList<QRectF> parts = {page.adjusted(page.width() - scrollBar, 0, 0, 0)};
        const QList<AccessibleNode> nodes = application().root().children().constFirst().children();
        const QStringList roles = AccessibleNode::roleNames(nodes);
        const QList<QRect> places = AccessibleNode::extents(nodes);
        const QPoint origin = window().rect().topLeft();
        for (qsizetype i = 0; i < nodes.size(); ++i) {
            const bool isFace = roles.at(i) == u"push button"_s || roles.at(i) == u"page tab"_s;
            const QRectF box(places.at(i).translated(-origin));
            parts.append(isFace ? box.adjusted(8, 8, -8, -8) : box.adjusted(-2, -2, 2, 2));
        }
        const QRectF output = place(window().outputBelow(u"Connector / server"_s));
        parts.append(QRectF(output.right() - 2, output.top() - 12, scrollBar, 134));
        QList<QRect> rects;
        for (const QRectF &part : parts)
            rects.append(QRect(picture.pixelAt(part.topLeft()), picture.pixelAt(part.bottomRight())));
        return rects;
    }

private slots:
    // Each function starts the program in its own way.
    void init() override { }

    void everythingLooksAsDesigned_data()
    {
        QTest::addColumn<QString>("scale");
        QTest::addColumn<QString>("renderer");
        for (const char *scale : {"1", "1.5", "2"}) {
            for (const char *renderer : {"software", "opengl"}) {
                QTest::addRow("%s times on %s", scale, renderer)
                    << QString::fromLatin1(scale) << QString::fromLatin1(renderer);
            }
        }
    }

    void everythingLooksAsDesigned()
    {
        QFETCH(const QString, scale);
        QFETCH(const QString, renderer);
        startAt(scale, renderer);
        openDetails();
        const Picture picture = takePicture(scale);
        QCOMPARE(picture.rect().size(), window().rect().size() * scale.toDouble());
        // Outlines are one wide, and fill whole pixels.
        const int line = qRound(scale.toDouble());
        verifyPage(picture);
        verifyTiles(picture);
        verifyCards(picture, line);
        verifyButtons(picture, line);
        verifyPanel(picture, line);
    }

    void aPressedButtonIsWhole_data()
    {
        QTest::addColumn<QString>("scale");
        QTest::addColumn<QString>("renderer");
        for (const char *scale : {"1", "1.25", "1.5", "2", "3"}) {
            for (const char *renderer : {"software", "opengl"}) {
                QTest::addRow("%s times on %s", scale, renderer)
                    << QString::fromLatin1(scale) << QString::fromLatin1(renderer);
            }
        }
    }

    void aPressedButtonIsWhole()
    {
        QFETCH(const QString, scale);
        QFETCH(const QString, renderer);
        startAt(scale, renderer);
        verifyPressed(u"Check server"_s, u"server-health"_s, scale.toDouble(), Qt::white, outlinePressed);
        startAt(scale, renderer);
        desktop::clickAt(pixelOf(place(window().tokenField()).center(), scale.toDouble()));
        desktop::type(u"x"_s);
        QTRY_COMPARE(window().tokenField().characterCount(), 1);
        verifyPressed(u"Claim token"_s, u"claim-token"_s, scale.toDouble(), accentPressed, accentPressed);
    }

    void bothRenderersPaintTheSame_data()
    {
        QTest::addColumn<QString>("scale");
        for (const char *scale : {"1", "1.25", "1.5", "2"})
            QTest::addRow("%s times", scale) << QString::fromLatin1(scale);
    }

    void bothRenderersPaintTheSame()
    {
        QFETCH(const QString, scale);
        startAt(scale, u"software"_s);
        openDetails();
        const Picture one = takePicture(scale);
        startAt(scale, u"opengl"_s);
        openDetails();
        const Picture other = takePicture(scale);
        QCOMPARE(one.rect(), other.rect());
        QRegion same(one.rect());
        const QList<QRect> parts = smoothedParts(one);
        for (const QRect &part : parts)
            same -= part;
        constexpr int tolerance = 4;
        const auto difference = one.difference(other, same, tolerance);
        const QPoint at = difference.value_or(QPoint());
        QVERIFY2(!difference, qPrintable(u"at %1, %2"_s.arg(at.x()).arg(at.y())));
    }
};

static const TestClass<TestLooks> testLooks("tst_looks");

#include "tst_looks.moc"
