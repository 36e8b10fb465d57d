#include "desktop.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <algorithm>

using namespace Qt::StringLiterals;

/// The window's size under a compositor that divides the screen among all windows and asks for no minimum,
/// and under one where windows choose their size.
class TestTiling : public WindowTest
{
    Q_OBJECT

    static constexpr int screenWidth = 1600;

    [[nodiscard]] bool fillsHalf() const
    {
        const int width = window().rect().width();
        return width > screenWidth / 2 - 20 && width <= screenWidth / 2;
    }

    /// One that is wider than the window shows its beginning.
    [[nodiscard]] bool isInView(const AccessibleNode &control) const
    {
        const QRect place = control.extents();
        const int width = std::min(place.width(), window().rect().width() / 2);
        return !place.isEmpty() && window().rect().contains(QRect(place.topLeft(), QSize(width, 14)));
    }

private slots:
    void init() override { renew(); }

    void itsTileIsAcceptedAndEachControlScrolledIntoIt()
    {
        Application neighbour;
        QVERIFY(neighbour.installSimulator() && neighbour.start());
        start();
        QTRY_VERIFY(window().isActive());
        QTRY_VERIFY(fillsHalf());
        for (int control = 0; control < 21; ++control) {
            const QString before = window().focused().path();
            desktop::press(u"Tab"_s);
            QTRY_VERIFY(!window().focused().isNull() && window().focused().path() != before);
            QTRY_VERIFY2(isInView(window().focused()), qPrintable(window().focused().name()));
        }
        QCOMPARE(window().focused().name(), u"Open technical log"_s);
    }

    void aTileMayBecomeSmaller()
    {
        start();
        QTRY_COMPARE_GT(window().rect().width(), screenWidth - 20);
        Application neighbour;
        QVERIFY(neighbour.installSimulator() && neighbour.start());
        QTRY_VERIFY(fillsHalf());
    }

    void aFloatingWindowKeepsItsMinimum()
    {
        desktop::press(u"F10"_s);
        start();
        QTRY_VERIFY(window().isActive());
        QTRY_COMPARE(window().rect().size(), QSize(1120, 760));
        // Only when it has kept its size for a while does it know that it is not tiled.
        QVERIFY(!QTest::qWaitFor([&] { return window().rect().size() != QSize(1120, 760); }, 1000));
        desktop::press(u"F11"_s);
        QTRY_COMPARE_GT(window().rect().width(), 1200);
        desktop::press(u"F12"_s);
        QTRY_COMPARE(window().rect().size(), QSize(1120, 760));
    }
};

static const TestClass<TestTiling> testTiling("tst_tiling");

#include "tst_tiling.moc"
