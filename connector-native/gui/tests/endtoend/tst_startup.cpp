#include "desktop.h"
#include "support/testprogram.h"
#include "windowtest.h"

using namespace Qt::StringLiterals;

namespace {

const QStringList refreshTitlesNewestFirst = {u"status"_s, u"bind-status"_s, u"server-health"_s, u"status"_s};

} // namespace

/// What a user finds when the program has just been started, and how it ends.
class TestStartup : public WindowTest
{
    Q_OBJECT

private slots:
    void readsTheStateAtOnce()
    {
        QCOMPARE(window().title(), u"Brindlecove Connector"_s);
        QCOMPARE(window().tiles(),
                 QStringList({u"Connector"_s, u"pairing required"_s, u"Server"_s, u"reachable"_s,
                              u"Binding"_s, u"not bound"_s}));
        QVERIFY(window().shows(u"Connector: pairing required • Server: reachable • Binding: not bound"_s));
        QVERIFY(window().shows(u"No update action yet"_s));
        QVERIFY(window().shows(u"Balance not loaded yet"_s));
        QVERIFY(window().shows(u"Status: not checked"_s));
        QVERIFY(window().shows(u"Raw token, server, and binding output is hidden by default."_s));
        QCOMPARE(window().tabs(),
                 QStringList({u"Bybit"_s, u"OKX"_s, u"Gate"_s, u"BingX"_s, u"KuCoin"_s, u"Bitget"_s}));
    }

    void asksTheConnectorInAFixedOrder()
    {
        const QList<QStringList> expected =
            refreshCalls + QList<QStringList>{{u"load-credentials"_s, u"bybit"_s}} + refreshCalls;
        QCOMPARE(application().calls(), expected);

        openLog();
        QCOMPARE(window().logTitles(),
                 refreshTitlesNewestFirst + QStringList{u"load-credentials Bybit"_s}
                     + refreshTitlesNewestFirst);
    }

    void staysUsableWithoutAConnector()
    {
        renew();
        QVERIFY(application().removeConnector());
        start();
        QCOMPARE(window().tiles(),
                 QStringList({u"Connector"_s, u"starting"_s, u"Server"_s, u"unknown"_s, u"Binding"_s,
                              u"not bound"_s}));

        QVERIFY(window().clickButton(u"Refresh all"_s));
        QTRY_VERIFY(window().shows(u"13 command log entries available"_s));
        openLog();
        const QString output = window().log().value(0).output;
        QVERIFY2(output.startsWith(u"failed to run connector: "_s), qPrintable(output));
        QVERIFY2(output.contains(u"\nresolved_path=%1/.tidewell/"_s.arg(qEnvironmentVariable("HOME"))),
                 qPrintable(output));
        QVERIFY(output.endsWith(u"/brindlecove-connector"_s));
    }

    // Else it would be compiled at each start, and what came of it be kept in the user's home.
    void itsQmlIsCompiledAlready()
    {
        renew();
        application().setEnvironment(u"QT_LOGGING_RULES"_s, u"qt.qml.diskcache.debug=true"_s);
        start();
        QCOMPARE(application().printed(), QByteArray());
    }

    void endsWhenItsWindowIsClosed()
    {
        const desktop::WindowManager manager;
        renew();
        start();
        QTRY_VERIFY(window().isActive());

        manager.closeActiveWindow();
        QCOMPARE(application().waitForEnd(), 0);
        QCOMPARE(application().calls().size(), startupCalls);
    }

    void keepsItsMinimumSizeWithoutAWindowManager()
    {
        QVERIFY(desktop::windowSize(window().id()).width() >= 1120);

        desktop::resizeWindow(window().id(), 1300, 900);
        QTRY_COMPARE(window().rect().size(), QSize(1300, 900));
        desktop::resizeWindow(window().id(), 500, 300);
        QTRY_COMPARE(desktop::windowSize(window().id()), QSize(1120, 760));
        QTRY_COMPARE(window().rect().size(), QSize(1120, 760));
    }

    void takesTheKeyboardFromTheStart()
    {
        const desktop::WindowManager manager;
        renew();
        start();
        QTRY_VERIFY(window().isActive());

        desktop::press(u"Tab"_s);
        QTRY_VERIFY(window().button(u"Refresh all"_s).is(AccessibleNode::State::Focused));
        desktop::press(u"space"_s);
        QTRY_COMPARE(application().calls().size(), startupCalls + 4);
    }
};

static const TestClass<TestStartup> testStartup("tst_startup");

#include "tst_startup.moc"
