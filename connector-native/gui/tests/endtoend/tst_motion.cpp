#include "desktop.h"
#include "fakeportal.h"
#include "picture.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <QDBusMessage>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QtDBus/qdbusconnection.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int commandTime = 700;
constexpr int hold = 150;
// What a busy machine may lose of a time.
constexpr int slack = 100;

bool isLike(QColor one, QColor other)
{
    constexpr int tolerance = 3;
    return areAlike(one, other, tolerance);
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
        const QImage noAnswer = desktop::screenshot(answer);
        static_cast<void>(
            application().setFaults("ONLY=update-apply\nDELAY_MS=" + QByteArray::number(commandTime) + '\n'));
        desktop::clickAt(button.center());

        PressSeen press;
        QElapsedTimer sinceTheEnd;
        const auto look = [&] {
            const QColor colour = desktop::screenshot(face).pixelColor(0, 0);
            if (!sinceTheEnd.isValid() && desktop::screenshot(answer) != noAnswer)
                sinceTheEnd.start();
            if (!sinceTheEnd.isValid() && isLike(colour, accentPressed)) {
                press.wasPressedBeforeTheEnd = true;
                press.shrank = isLike(desktop::screenshot(edge).pixelColor(0, 0), Qt::white);
            }
            if (!sinceTheEnd.isValid())
                return false;
            press.isReleased = isLike(colour, accent);
            if (isLike(colour, accentPressed)) {
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

#if QT_VERSION < QT_VERSION_CHECK(6, 5, 0) // Newer ones ask the portal for the colour scheme, and start it.
    // A desktop that has a portal has started it; on others none is started because of this window.
    void askingTheDesktopStartsNoService()
    {
        const QTemporaryDir started;
        const QString services = qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/dbus-1/services/"_s;
        QVERIFY(QDir().mkpath(services));
        const QString portal = u"org.freedesktop.portal.Desktop"_s;
        const QString control = u"org.example.Control"_s;
        for (const QString &name : {portal, control}) {
            QFile service(services + name + u".service"_s);
            QVERIFY(service.open(QIODevice::WriteOnly));
            service.write((u"[D-BUS Service]\nName=%1\nExec=/usr/bin/touch %2\n"_s)
                              .arg(name, started.filePath(name))
                              .toUtf8());
        }
        const auto tellBus = [](const QString &method, const QVariantList &arguments) {
            QDBusMessage message = QDBusMessage::createMethodCall(
                u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, method);
            message.setArguments(arguments);
            static_cast<void>(QDBusConnection::sessionBus().call(message, QDBus::Block, 1000));
        };
        tellBus(u"ReloadConfig"_s, {});
        renew();
        start();
        tellBus(u"StartServiceByName"_s, {control, 0U});
        QTRY_VERIFY(QFile::exists(started.filePath(control)));
        QVERIFY(!QFile::exists(started.filePath(portal)));
        QVERIFY(QDir(services).removeRecursively());
        tellBus(u"ReloadConfig"_s, {});
    }
#endif

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

static const TestClass<TestMotion> testMotion("tst_motion");

#include "tst_motion.moc"
