#include "application.h"
#include "desktop.h"
#include "mainwindow.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

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
class DesktopSettingsTest : public QObject
{
    Q_OBJECT

    /// Starts the program on a desktop with these settings.
    void start(const QByteArray &settings)
    {
        m_settings = std::make_unique<QTemporaryDir>();
        QFile file(m_settings->filePath(u"kdeglobals"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(settings), settings.size());
        file.close();
        m_application = std::make_unique<Application>();
        m_application->setEnvironment(u"XDG_CURRENT_DESKTOP"_s, u"KDE"_s);
        m_application->setEnvironment(u"KDE_SESSION_VERSION"_s, u"5"_s);
        m_application->setEnvironment(u"XDG_CONFIG_HOME"_s, m_settings->path());
        QVERIFY(m_application->installSimulator());
        QVERIFY(m_application->start());
        m_window = std::make_unique<MainWindow>(*m_application);
        QTRY_VERIFY(m_window->shows(u"9 command log entries available"_s));
    }

    /// The window with a typed token, all of which is selected.
    [[nodiscard]] QImage takePicture() const
    {
        if (!m_window->fill(m_window->tokenField(), u"Token"_s))
            return {};
        desktop::press(u"ctrl+a"_s);
        desktop::moveTo(m_window->rect().bottomLeft());
        QImage last;
        const auto isStill = [&] {
            const QImage now = desktop::pictureOf(m_window->id());
            return std::exchange(last, now) == now && m_window->tokenField().text() == u"Token"_s;
        };
        return QTest::qWaitFor(isStill) ? last : QImage();
    }

    void showEverything()
    {
        QVERIFY(m_window->button(u"Show details"_s).act(u"Press"_s));
        QVERIFY(m_window->tab(u"KuCoin"_s).act(u"Press"_s));
        QTRY_VERIFY(!m_window->fieldBelow(u"Passphrase"_s).isNull());
        QVERIFY(m_window->button(u"Load balance"_s).act(u"Press"_s));
        QTRY_VERIFY(m_window->shows(u"Could not load balance"_s));
        QVERIFY(m_window->button(u"Check for updates"_s).act(u"Press"_s));
        QVERIFY(m_window->button(u"Open technical log"_s).act(u"Press"_s));
        QTRY_VERIFY(!m_window->button(u"Hide technical log"_s).isNull());
    }

    [[nodiscard]] QList<AccessibleNode> items() const
    {
        QList<AccessibleNode> nodes = m_application->root().children().constFirst().children();
        nodes.removeIf([](const AccessibleNode &node) { return node.extents().isEmpty(); });
        return nodes;
    }

    /// An output lies in a box of its own, of which it may be more than is seen.
    [[nodiscard]] static bool isOutput(const AccessibleNode &node)
    {
        return node.is(AccessibleNode::State::ReadOnly);
    }

    std::unique_ptr<QTemporaryDir> m_settings;
    std::unique_ptr<Application> m_application;
    std::unique_ptr<MainWindow> m_window;

private slots:
    void initTestCase() { QVERIFY(enableAccessibility()); }

    void aDarkDesktopLeavesTheWindowLight()
    {
        start(noBlinking + font(usualPoints) + colours(white, black));
        const QImage light = takePicture();
        QVERIFY(!light.isNull());
        start(noBlinking + font(usualPoints) + colours(black, white));
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
        start(font(points));
        // Of a line of text in these fonts.
        constexpr double heightPerPoint = 14.0 / usualPoints;
        const int height = m_window->label(u"Quick state"_s).extents().height();
        QVERIFY2(qAbs(height - points * heightPerPoint) <= 3, qPrintable(QString::number(height)));
        showEverything();

        const QRect window = m_window->rect();
        const QList<AccessibleNode> nodes = items();
        for (auto node = nodes.cbegin(); node != nodes.cend(); ++node) {
            const QRect place = node->extents();
            QVERIFY2(place.left() > window.left() && place.right() < window.right(),
                     qPrintable(node->name()));
            for (auto other = node + 1; other != nodes.cend(); ++other) {
                if (!isOutput(*node) && !isOutput(*other)) {
                    QVERIFY2(!place.intersects(other->extents()),
                             qPrintable(node->name() + u" overlaps "_s + other->name()));
                }
            }
        }
    }

    void cleanup()
    {
        QCOMPARE(m_application->printed(), QByteArray());
        m_window.reset();
        m_application.reset();
    }
};

QTEST_GUILESS_MAIN(DesktopSettingsTest)
#include "tst_desktopsettings.moc"
