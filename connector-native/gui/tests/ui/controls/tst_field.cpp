#include "controls/fieldtest.h"
#include "shownitems.h"
#include "support/testprogram.h"

#include <QtGui/qstylehints.h>

using namespace Qt::StringLiterals;

namespace {

constexpr QColor border(199, 207, 219);
constexpr int sidePadding = 9;
const QString longText = u"M"_s + QString(200, u'.');

} // namespace

// How a field shows its text and its focus.
class TestField : public FieldTest
{
    Q_OBJECT

    // The middle row of a field as it is painted, and how far from its left end, in logical pixels.
    struct Row
    {
        QImage image;
        qreal ratio;
        [[nodiscard]] QColor at(qreal x) const
        {
            return image.pixelColor(qRound(x * ratio), image.height() / 2);
        }
        [[nodiscard]] bool isEmpty(qreal from, qreal to) const
        {
            for (int x = qCeil(from * ratio); x < qFloor(to * ratio); ++x) {
                for (int y = qCeil(4 * ratio); y < image.height() - qCeil(4 * ratio); ++y) {
                    if (image.pixelColor(x, y) != QColor(Qt::white)) {
                        return false;
                    }
                }
            }
            return true;
        }
    };

    [[nodiscard]] Row row(const char *type) const
    {
        const QImage page = settled(*window());
        const qreal ratio = window()->effectiveDevicePixelRatio();
        const QRectF place = field(type)->mapRectToScene(field(type)->boundingRect());
        return {page.copy(QRectF(place.topLeft() * ratio, place.size() * ratio).toAlignedRect()), ratio};
    }

    [[nodiscard]] qreal widthOf(const char *type) const { return field(type)->width(); }

    // The first letter crosses the middle row, the others lie below it.
    [[nodiscard]] bool showsBeginning(const char *type) const
    {
        const Row shown = row(type);
        for (int x = qCeil(sidePadding * shown.ratio); x < 2 * sidePadding * shown.ratio; ++x) {
            if (shown.image.pixelColor(x, shown.image.height() / 2).lightness() < 150) {
                return true;
            }
        }
        return false;
    }

    void paste(const char *type, const QString &text) const
    {
        input(type)->forceActiveFocus(Qt::MouseFocusReason);
        setClipboard(text);
        QTest::keySequence(window(), QKeySequence::Paste);
        QCOMPARE(textOf(input(type)), text);
    }

private slots:
    void initTestCase()
    {
        FieldTest::initTestCase();
        QGuiApplication::styleHints()->setCursorFlashTime(0);
    }

    void aLongTextEndsAtThePadding_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::newRow("plain") << QByteArray("plain");
        QTest::newRow("masked") << QByteArray("masked");
    }

    void aLongTextEndsAtThePadding()
    {
        QFETCH(const QByteArray, type);
        const qreal width = widthOf(type.constData());
        paste(type.constData(), QString(100, u'W'));
        const auto isInside = [&] {
            const Row shown = row(type.constData());
            return shown.isEmpty(2, sidePadding) && shown.isEmpty(width - sidePadding, width - 2)
                && !shown.isEmpty(sidePadding, sidePadding + 20)
                && !shown.isEmpty(width - sidePadding - 20, width - sidePadding);
        };
        QVERIFY(isInside());
        QTest::keyClick(window(), Qt::Key_Home);
        QVERIFY(isInside());
        window()->contentItem()->forceActiveFocus();
        QVERIFY(isInside());
    }

    void theCursorIsSeenAtBothEnds()
    {
        paste("plain", longText);
        const qreal behind = widthOf("plain") - sidePadding - 1;
        QCOMPARE(row("plain").at(behind).lightness() < 100, true);
        QTest::keyClick(window(), Qt::Key_Home);
        QCOMPARE(row("plain").at(sidePadding).lightness() < 100, true);
        QVERIFY(row("plain").at(behind).lightness() > 200);
    }

    void aFieldThatIsLeftShowsItsBeginning()
    {
        paste("plain", longText);
        QVERIFY(!showsBeginning("plain"));
        QTest::keyClick(window(), Qt::Key_Tab);
        QVERIFY(input("masked")->hasActiveFocus());
        QVERIFY(showsBeginning("plain"));
        QTest::keyClick(window(), Qt::Key_Backtab);
        QVERIFY(!showsBeginning("plain"));
    }

    void aTextFromElsewhereShowsItsBeginning()
    {
        field("plain")->setProperty("stored", longText);
        QVERIFY(showsBeginning("plain"));
    }

    void anotherWindowOrItsMenuLeavesTheTextWhereItIs()
    {
        paste("plain", longText);
        QTest::keyClick(window(), Qt::Key_Left);
        const Row before = row("plain");
        QTest::keyClick(window(), Qt::Key_Menu);
        QTRY_VERIFY(!input("plain")->hasActiveFocus());
        QVERIFY(!showsBeginning("plain"));
        QTest::keyClick(window(), Qt::Key_Escape);
        QTRY_VERIFY(input("plain")->hasActiveFocus());
        QCOMPARE(row("plain").image, before.image);
        TestWindow other;
        QVERIFY(other.isReady());
        QTRY_VERIFY(!input("plain")->hasActiveFocus());
        QVERIFY(!showsBeginning("plain"));
    }

    void aClickOnThePaddingIsOneIntoTheText()
    {
        const QPoint corner = field("plain")->mapToScene(QPointF(2, 2)).toPoint();
        QTest::mouseClick(window(), Qt::LeftButton, {}, corner);
        QVERIFY(input("plain")->hasActiveFocus());
        QTest::mouseClick(window(), Qt::LeftButton, {}, middleOf(field("masked")) - QPoint(98, 0));
        QVERIFY(input("masked")->hasActiveFocus());
    }

    void thePointerOverItIsAnIBeam()
    {
        for (const char *type : {"plain", "masked"}) {
            QTest::mouseMove(window(), QPoint(2, 2));
            QTRY_COMPARE(window()->cursor().shape(), Qt::ArrowCursor);
            const QRectF place = field(type)->mapRectToScene(field(type)->boundingRect());
            QTest::mouseMove(window(), place.topLeft().toPoint() + QPoint(3, 3));
            QTRY_COMPARE(window()->cursor().shape(), Qt::IBeamCursor);
        }
    }

    void theBorderTellsTheFocusAndTheRingTheKeyboards()
    {
        const auto borderNow = [this] { return row("plain").at(0); };
        const auto ringNow = [this] {
            return pixel(field("plain")->mapToScene({-2, field("plain")->height() / 2}).toPoint());
        };
        const QColor page = ringNow();
        QCOMPARE(borderNow(), border);
        QTest::mouseClick(window(), Qt::LeftButton, {}, middleOf(field("plain")));
        QCOMPARE(borderNow(), accent);
        QCOMPARE(ringNow(), page);

        QTest::mouseClick(window(), Qt::RightButton, {}, middleOf(field("plain")));
        QTRY_VERIFY(!input("plain")->hasActiveFocus());
        QCOMPARE(borderNow(), accent);
        QTest::keyClick(window(), Qt::Key_Escape);
        QTRY_VERIFY(input("plain")->hasActiveFocus());
        QCOMPARE(ringNow(), page);

        QTest::keyClick(window(), Qt::Key_Tab);
        QCOMPARE(borderNow(), border);
        QTest::keyClick(window(), Qt::Key_Backtab);
        QCOMPARE(borderNow(), accent);
        QCOMPARE(ringNow(), accent);
        QTest::keyClick(window(), Qt::Key_Menu);
        QTest::keyClick(window(), Qt::Key_Escape);
        QTRY_VERIFY(input("plain")->hasActiveFocus());
        QCOMPARE(ringNow(), accent);
    }
};

static const TestClass<TestField> testField("tst_field");

#include "tst_field.moc"
