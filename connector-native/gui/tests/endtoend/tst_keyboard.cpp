#include "application.h"
#include "desktop.h"
#include "mainwindow.h"

#include <QTest>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int startupCalls = 9;

} // namespace

/// The window in the hands of somebody without a mouse.
class KeyboardTest : public QObject
{
    Q_OBJECT

    [[nodiscard]] AccessibleNode focused() const
    {
        const QList<AccessibleNode> nodes = m_application->root().subtree();
        const auto found = std::ranges::find_if(
            nodes, [](const AccessibleNode &node) { return node.is(AccessibleNode::State::Focused); });
        return found == nodes.end() ? AccessibleNode() : *found;
    }

    /// One press must bring the focus from where it is to the named control, and its first line into view.
    void moveTo(const QString &key, const QString &name)
    {
        const QString before = focused().path();
        desktop::press(key);
        QTRY_VERIFY(focused().path() != before);
        QCOMPARE(focused().name(), name);
        QRect place;
        const auto isInView = [&] {
            constexpr int lineHeight = 14;
            place = focused().extents();
            return m_window->rect().contains(QRect(place.left(), place.top(), place.width(), lineHeight));
        };
        QVERIFY2(QTest::qWaitFor(isInView),
                 qPrintable(u"%1 lies at %2 to %3"_s.arg(name).arg(place.top()).arg(place.bottom())));
    }

    std::unique_ptr<desktop::WindowManager> m_manager;
    std::unique_ptr<Application> m_application;
    std::unique_ptr<MainWindow> m_window;

private slots:
    void initTestCase()
    {
        QVERIFY(enableAccessibility());
        m_manager = std::make_unique<desktop::WindowManager>();
    }

    void init()
    {
        m_application = std::make_unique<Application>();
        QVERIFY(m_application->installSimulator());
        QVERIFY(m_application->start());
        m_window = std::make_unique<MainWindow>(*m_application);
        QTRY_COMPARE(m_application->calls().size(), startupCalls);
        QTRY_VERIFY(m_application->root().children().constFirst().is(AccessibleNode::State::Active));
    }

    void reachesEveryControlInReadingOrder()
    {
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
        QTRY_COMPARE(focused().name(), u"Open technical log"_s);
        desktop::press(u"space"_s);
        QTRY_COMPARE(focused().name(), u"Hide technical log"_s);

        const QStringList entries = {
            u"status"_s, u"bind-status"_s, u"server-health"_s, u"status"_s, u"load-credentials Bybit"_s,
            u"status"_s, u"bind-status"_s, u"server-health"_s, u"status"_s};
        for (const QString &entry : entries)
            moveTo(u"Tab"_s, entry);
        moveTo(u"Tab"_s, u"Refresh all"_s);
    }

    void pressesWithSpaceAndReturn()
    {
        moveTo(u"Tab"_s, u"Refresh all"_s);
        desktop::press(u"space"_s);
        QTRY_COMPARE(m_application->calls().size(), startupCalls + 4);
        desktop::press(u"Return"_s);
        QTRY_COMPARE(m_application->calls().size(), startupCalls + 8);
        desktop::press(u"KP_Enter"_s);
        QTRY_COMPARE(m_application->calls().size(), startupCalls + 12);
    }

    void pressesForAnAssistiveTechnology()
    {
        QVERIFY(m_window->button(u"Check server"_s).act(u"Press"_s));
        QTRY_COMPARE(m_application->calls().size(), startupCalls + 1);
        QCOMPARE(m_application->calls().constLast(), QStringList({u"server-health"_s}));
        QVERIFY(m_window->tab(u"Gate"_s).act(u"Press"_s));
        QTRY_VERIFY(m_window->tab(u"Gate"_s).is(AccessibleNode::State::Selected));
        QVERIFY(!m_window->tab(u"Bybit"_s).is(AccessibleNode::State::Selected));
    }

    void cleanup()
    {
        QCOMPARE(m_application->printed(), QByteArray());
        m_window.reset();
        m_application.reset();
    }
};

QTEST_GUILESS_MAIN(KeyboardTest)
#include "tst_keyboard.moc"
