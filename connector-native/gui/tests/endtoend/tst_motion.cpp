#include "desktop.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QtDBus/qdbusconnection.h>
#include <QtDBus/qdbusmetatype.h>

#include <algorithm>

using namespace Qt::StringLiterals;

using PortalSettings = QMap<QString, QVariantMap>;

namespace {

constexpr int commandTime = 700;
constexpr int hold = 150;
// What a busy machine may lose of a time.
constexpr int slack = 100;

constexpr QColor rest(10, 97, 219);
// Nine tenths of it on white.
constexpr QColor pressed(35, 113, 223);

bool isLike(QColor one, QColor other)
{
    constexpr int tolerance = 3;
    return qAbs(one.red() - other.red()) <= tolerance && qAbs(one.green() - other.green()) <= tolerance
        && qAbs(one.blue() - other.blue()) <= tolerance;
}

QImage seen(QRect part)
{
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, part.x(), part.y(), part.width(), part.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

/// What an eye sees of one press of a button, in milliseconds.
struct PressSeen
{
    bool wasPressedBeforeTheEnd = false;
    bool shrank = false;
    int heldAfterTheEnd = 0; ///< From the answer on the screen to the first sign of a release.
    int framesBetween = 0; ///< Looks between pressed and not.
    bool isReleased = false;
};

} // namespace

/// The settings portal of a desktop whose user asks for less motion.
class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit FakePortal(PortalSettings settings)
        : m_settings(std::move(settings))
    {
        qDBusRegisterMetaType<PortalSettings>();
        QDBusConnection bus = QDBusConnection::sessionBus();
        m_isThere =
            bus.registerObject(u"/org/freedesktop/portal/desktop"_s, this, QDBusConnection::ExportAllSlots)
            && bus.registerService(u"org.freedesktop.portal.Desktop"_s);
    }
    ~FakePortal() override
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.unregisterService(u"org.freedesktop.portal.Desktop"_s);
        bus.unregisterObject(u"/org/freedesktop/portal/desktop"_s);
    }
    Q_DISABLE_COPY_MOVE(FakePortal)

    [[nodiscard]] bool isThere() const { return m_isThere; }
    [[nodiscard]] bool wasAsked() const { return m_wasAsked; }

public slots:
    PortalSettings ReadAll(const QStringList &nameSpaces)
    {
        m_wasAsked = true;
        PortalSettings answer;
        for (const QString &nameSpace : nameSpaces)
            answer.insert(nameSpace, m_settings.value(nameSpace));
        return answer;
    }

private:
    PortalSettings m_settings;
    bool m_isThere = false;
    bool m_wasAsked = false;
};

/// How a button moves while a command runs and after it.
class TestMotion : public WindowTest
{
    Q_OBJECT

    /// Presses "Install update" and looks on until it is as before.
    [[nodiscard]] PressSeen press() const
    {
        const QRect button = window().bringIntoView(window().button(u"Install update"_s));
        const QRect answer = window().label(u"No update action yet"_s).extents();
        const QRect face(button.left() + 7, button.center().y(), 1, 1);
        const QRect edge(button.left() + 1, button.center().y(), 1, 1);
        const QImage noAnswer = seen(answer);
        static_cast<void>(
            application().setFaults("ONLY=update-apply\nDELAY_MS=" + QByteArray::number(commandTime) + '\n'));
        desktop::clickAt(button.center());

        PressSeen press;
        QElapsedTimer sinceTheEnd;
        const auto look = [&] {
            const QColor colour = seen(face).pixelColor(0, 0);
            if (!sinceTheEnd.isValid() && seen(answer) != noAnswer)
                sinceTheEnd.start();
            if (!sinceTheEnd.isValid() && isLike(colour, pressed)) {
                press.wasPressedBeforeTheEnd = true;
                press.shrank = isLike(seen(edge).pixelColor(0, 0), Qt::white);
            }
            if (!sinceTheEnd.isValid())
                return false;
            press.isReleased = isLike(colour, rest);
            if (isLike(colour, pressed)) {
                press.heldAfterTheEnd = static_cast<int>(sinceTheEnd.elapsed());
            } else if (!press.isReleased) {
                ++press.framesBetween;
            }
            return press.isReleased;
        };
        static_cast<void>(QTest::qWaitFor(look));
        return press;
    }

private slots:
    void aButtonLooksPressedUntilShortlyAfterItsCommand()
    {
        const PressSeen seenPress = press();
        QVERIFY(seenPress.wasPressedBeforeTheEnd);
        QVERIFY(seenPress.shrank);
        QVERIFY2(seenPress.heldAfterTheEnd > hold - slack,
                 qPrintable(QString::number(seenPress.heldAfterTheEnd)));
        QVERIFY(seenPress.isReleased);
    }

    void aReleaseIsSeenToMove() { QVERIFY(press().framesBetween > 0); }

    void aDesktopCanAskForLessMotion_data()
    {
        QTest::addColumn<QString>("nameSpace");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("any desktop") << u"org.freedesktop.appearance"_s << u"reduced-motion"_s
                                     << QVariant(1U);
        QTest::newRow("GNOME") << u"org.gnome.desktop.interface"_s << u"enable-animations"_s
                               << QVariant(false);
        QTest::newRow("KDE") << u"org.kde.kdeglobals.KDE"_s << u"AnimationDurationFactor"_s
                             << QVariant(u"0"_s);
    }

    void aDesktopCanAskForLessMotion()
    {
        QFETCH(const QString, nameSpace);
        QFETCH(const QString, key);
        QFETCH(const QVariant, value);
        const FakePortal portal({{nameSpace, {{key, value}}}});
        QVERIFY(portal.isThere());
        renew();
        start();
        QTRY_VERIFY(portal.wasAsked());
        const PressSeen seenPress = press();
        QVERIFY(seenPress.wasPressedBeforeTheEnd);
        QVERIFY2(seenPress.heldAfterTheEnd > hold - slack,
                 qPrintable(QString::number(seenPress.heldAfterTheEnd)));
        QVERIFY(seenPress.isReleased);
        QCOMPARE(seenPress.framesBetween, 0);
    }
};

static const TestClass<TestMotion> registered("tst_motion");

#include "tst_motion.moc"
