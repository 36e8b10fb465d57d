#include "desktop.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <QGuiApplication>
#include <QScreen>

using namespace Qt::StringLiterals;

/// The window in the hands of somebody without a mouse.
class TestKeyboard : public ActiveWindowTest
{
    Q_OBJECT

    /// What of the window lies on the screen, in the pixels of its nodes.
    [[nodiscard]] QRect visiblePart() const
    {
        const QSize screen = QGuiApplication::primaryScreen()->size();
        const qreal scale = qreal(desktop::windowSize(window().id()).width()) / window().rect().width();
        return window().rect().intersected(QRect(QPoint(), (screen.toSizeF() / scale).toSize()));
    }

    /// One press must bring the focus from where it is to the named control, and its first line into view; of
    /// one that is wider than the view, its beginning.
    void moveTo(const QString &key, const QString &name)
    {
        const QString before = window().focused().path();
        desktop::press(key);
        QTRY_VERIFY(window().focused().path() != before);
        QCOMPARE(window().focused().name(), name);
        QRect place;
        const auto isInView = [&] {
            constexpr int lineHeight = 14;
            place = window().focused().extents();
            const QRect visible = visiblePart();
            const int width = place.width() <= visible.width() ? place.width() : visible.width() / 2;
            return visible.contains(QRect(place.left(), place.top(), width, lineHeight));
        };
        QVERIFY2(QTest::qWaitFor(isInView),
                 qPrintable(u"%1 lies at %2, %3"_s.arg(name).arg(place.left()).arg(place.top())));
    }

    void startOnASmallScreen()
    {
        renew();
        application().setEnvironment(u"QT_SCALE_FACTOR"_s, u"3"_s);
        start();
        QTRY_VERIFY(window().isActive());
    }

private slots:
    void reachesEveryControlInReadingOrder_data()
    {
        QTest::addColumn<bool>("isSmallScreen");
        QTest::newRow("on a screen as large as the window") << false;
        QTest::newRow("on a smaller screen") << true;
    }

    void reachesEveryControlInReadingOrder()
    {
        QFETCH(const bool, isSmallScreen);
        if (isSmallScreen) {
            startOnASmallScreen();
            QVERIFY(visiblePart().width() < 600);
        }
        const QStringList controls = {u"Refresh all"_s,
                                      u"Bind token from terminal.brindlecove.example"_s,
                                      u"Claim token"_s,
                                      u"Disconnect"_s,
                                      u"Check server"_s,
                                      u"Show details"_s,
                                      u"Bybit"_s,
                                      u"OKX"_s,
                                      u"Gate"_s,
                                      u"BingX"_s,
                                      u"KuCoin"_s,
                                      u"Bitget"_s,
                                      u"API key"_s,
                                      u"API secret"_s,
                                      u"Validate and save keys"_s,
                                      u"Load balance"_s,
                                      u"Delete"_s,
                                      u"Check for updates"_s,
                                      u"Download update"_s,
                                      u"Install update"_s,
                                      u"Open technical log"_s};
        for (const QString &control : controls)
            moveTo(u"Tab"_s, control);
        for (auto control = controls.crbegin() + 1; control != controls.crend(); ++control)
            moveTo(u"shift+Tab"_s, *control);
    }

    void reachesEveryEntryOfTheLog()
    {
        desktop::press(u"shift+Tab"_s);
        QTRY_COMPARE(window().focused().name(), u"Open technical log"_s);
        desktop::press(u"space"_s);
        QTRY_COMPARE(window().focused().name(), u"Hide technical log"_s);

        const QStringList entries = {
            u"status"_s, u"bind-status"_s, u"server-health"_s, u"status"_s, u"load-credentials Bybit"_s,
            u"status"_s, u"bind-status"_s, u"server-health"_s, u"status"_s};
        for (const QString &entry : entries)
            moveTo(u"Tab"_s, entry);
        moveTo(u"Tab"_s, u"Refresh all"_s);
    }

    void closesByShortcut_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::newRow("as a window") << u"ctrl+w"_s;
        QTest::newRow("as a program") << u"ctrl+q"_s;
    }

    void closesByShortcut()
    {
        QFETCH(const QString, keys);
        moveTo(u"Tab"_s, u"Refresh all"_s);
        moveTo(u"Tab"_s, u"Bind token from terminal.brindlecove.example"_s);
        desktop::press(keys);
        QCOMPARE(application().waitForEnd(), 0);
    }

    void pressesWithSpaceAndReturn()
    {
        moveTo(u"Tab"_s, u"Refresh all"_s);
        desktop::press(u"space"_s);
        QTRY_COMPARE(application().calls().size(), startupCalls + 4);
        desktop::press(u"Return"_s);
        QTRY_COMPARE(application().calls().size(), startupCalls + 8);
        desktop::press(u"KP_Enter"_s);
        QTRY_COMPARE(application().calls().size(), startupCalls + 12);
    }

    void pressesForAnAssistiveTechnology()
    {
        QVERIFY(window().button(u"Check server"_s).act(u"Press"_s));
        QTRY_COMPARE(application().calls().size(), startupCalls + 1);
        QCOMPARE(application().calls().constLast(), QStringList({u"server-health"_s}));
        QVERIFY(window().tab(u"Gate"_s).act(u"Press"_s));
        QTRY_VERIFY(window().tab(u"Gate"_s).is(AccessibleNode::State::Selected));
        QVERIFY(!window().tab(u"Bybit"_s).is(AccessibleNode::State::Selected));
    }
};

static const TestClass<TestKeyboard> testKeyboard("tst_keyboard");

#include "tst_keyboard.moc"
