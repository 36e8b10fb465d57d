#include "desktop.h"
#include "fakeportal.h"
#include "picture.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// A desktop's own colours, from its windows to its selections, in white on black or the other way round.
QByteArray colours(const QByteArray &background, const QByteArray &foreground)
{
    QByteArray lines;
    for (const char *group : {"Window", "View", "Button", "Selection", "Tooltip", "Complementary"}) {
        lines += QByteArray("[Colors:") + group + "]\nBackgroundNormal=" + background
            + "\nBackgroundAlternate=" + background + "\nForegroundNormal=" + foreground
            + "\nForegroundInactive=" + foreground + "\nForegroundLink=" + foreground + '\n';
    }
    return lines;
}

QByteArray font(int points)
{
    const QByteArray size = QByteArray::number(points);
    return "[General]\nfont=Sans Serif," + size + ",-1,5,50,0,0,0,0,0\nfixed=Monospace," + size
        + ",-1,5,50,0,0,0,0,0\n";
}

// A blinking cursor would make each picture another one.
const QByteArray noBlinking = "[KDE]\nCursorBlinkRate=0\n";
const QByteArray black = "0,0,0";
const QByteArray white = "255,255,255";
constexpr int usualPoints = 9;

} // namespace

/// The window on desktops whose user has settings of their own.
class TestDesktopSettings : public WindowTest
{
    Q_OBJECT

    /// Starts the program on a desktop with these settings.
    void startWith(const QByteArray &settings)
    {
        m_settings = std::make_unique<QTemporaryDir>();
        QFile file(m_settings->filePath(u"kdeglobals"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(settings), settings.size());
        file.close();
        renew();
        application().setEnvironment(u"XDG_CURRENT_DESKTOP"_s, u"KDE"_s);
        application().setEnvironment(u"KDE_SESSION_VERSION"_s, u"5"_s);
        application().setEnvironment(u"XDG_CONFIG_HOME"_s, m_settings->path());
        start();
    }

    /// The window with a typed token, all of which is selected.
    [[nodiscard]] QImage takePicture() const
    {
        if (!window().fill(window().tokenField(), u"Token"_s))
            return {};
        desktop::press(u"ctrl+a"_s);
        desktop::moveTo(window().rect().bottomLeft());
        Stillness stillness;
        QImage last;
        const auto isStill = [&] {
            last = desktop::pictureOf(window().id());
            return stillness.isReachedBy(last) && window().tokenField().text() == u"Token"_s;
        };
        return QTest::qWaitFor(isStill) ? last : QImage();
    }

    /// Whether the left edge of a button is a line of this colour.
    [[nodiscard]] bool isOutlined(const QString &button, QColor colour) const
    {
        constexpr int length = 6;
        const QRect place = window().button(button).extents();
        const QRect edge(place.left(), place.center().y() - length / 2, 1, length);
        return desktop::pixelsNear(edge, colour) == length;
    }

    void showEverything()
    {
        QVERIFY(window().button(u"Show details"_s).act(u"Press"_s));
        QVERIFY(window().tab(u"KuCoin"_s).act(u"Press"_s));
        QTRY_VERIFY(!window().fieldBelow(u"Passphrase"_s).isNull());
        QVERIFY(window().button(u"Load balance"_s).act(u"Press"_s));
        QTRY_VERIFY(window().shows(u"Could not load balance"_s));
        QVERIFY(window().button(u"Check for updates"_s).act(u"Press"_s));
        QVERIFY(window().button(u"Open technical log"_s).act(u"Press"_s));
        QTRY_VERIFY(!window().button(u"Hide technical log"_s).isNull());
    }

    [[nodiscard]] QList<AccessibleNode> items() const
    {
        QList<AccessibleNode> nodes = application().root().children().constFirst().children();
        nodes.removeIf([](const AccessibleNode &node) { return node.extents().isEmpty(); });
        return nodes;
    }

    /// An output lies in a box of its own, of which it may be more than is seen.
    [[nodiscard]] static bool isOutput(const AccessibleNode &node)
    {
        return node.is(AccessibleNode::State::ReadOnly);
    }

    std::unique_ptr<QTemporaryDir> m_settings;

private slots:
    // Each function starts the program in its own way.
    void init() override { }

    void aDarkDesktopLeavesTheWindowLight()
    {
        startWith(noBlinking + font(usualPoints) + colours(white, black));
        const QImage light = takePicture();
        QVERIFY(!light.isNull());
        startWith(noBlinking + font(usualPoints) + colours(black, white));
        QCOMPARE(takePicture(), light);
    }

    void theFontSizeIsFollowed_data()
    {
        QTest::addColumn<int>("points");
        QTest::newRow("as usual") << usualPoints;
        QTest::newRow("half as large again") << usualPoints * 3 / 2;
        QTest::newRow("twice as large") << 2 * usualPoints;
    }

    void theFontSizeIsFollowed()
    {
        QFETCH(const int, points);
        startWith(font(points));
        // Of a line of text in these fonts.
        constexpr double heightPerPoint = 14.0 / usualPoints;
        const int height = window().label(u"Quick state"_s).extents().height();
        QVERIFY2(qAbs(height - points * heightPerPoint) <= 3, qPrintable(QString::number(height)));
        showEverything();

        const QRect inside = window().rect();
        const QList<AccessibleNode> nodes = items();
        for (auto node = nodes.cbegin(); node != nodes.cend(); ++node) {
            const QRect place = node->extents();
            QVERIFY2(place.left() > inside.left() && place.right() < inside.right(),
                     qPrintable(node->name()));
            for (auto other = node + 1; other != nodes.cend(); ++other) {
                if (!isOutput(*node) && !isOutput(*other)) {
                    QVERIFY2(!place.intersects(other->extents()),
                             qPrintable(node->name() + u" overlaps "_s + other->name()));
                }
            }
        }
    }

    void aDesktopCanAskForHighContrast_data()
    {
        QTest::addColumn<QString>("nameSpace");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("any desktop") << u"org.freedesktop.appearance"_s << u"contrast"_s << QVariant(1U);
        QTest::newRow("GNOME") << u"org.gnome.desktop.a11y.interface"_s << u"high-contrast"_s
                               << QVariant(true);
    }

    void aDesktopCanAskForHighContrast()
    {
        QFETCH(const QString, nameSpace);
        QFETCH(const QString, key);
        QFETCH(const QVariant, value);
        constexpr QColor outline(199, 207, 219);
        constexpr QColor strongOutline(74, 84, 105);
        WindowTest::init();
        QTRY_VERIFY(isOutlined(u"Check server"_s, outline));
        const FakePortal portal({{nameSpace, {{key, value}}}});
        QVERIFY(portal.isThere());
        renew();
        start();
        QTRY_VERIFY(portal.wasAsked());
        QTRY_VERIFY(isOutlined(u"Check server"_s, strongOutline));
    }
};

static const TestClass<TestDesktopSettings> testDesktopSettings("tst_desktopsettings");

#include "tst_desktopsettings.moc"
