#include "desktop.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using State = AccessibleNode::State;

constexpr int panelPadding = 12;

} // namespace

/// A trader's whole day without a mouse.
class TestKeyboardJourney : public ActiveWindowTest
{
    Q_OBJECT

    /// The name of the control to which the key moves the focus.
    [[nodiscard]] QString nameAfter(const QString &key) const
    {
        const QString before = window().focused().path();
        desktop::press(key);
        AccessibleNode now;
        static_cast<void>(QTest::qWaitFor([&] {
            now = window().focused();
            return !now.isNull() && now.path() != before;
        }));
        return now.name();
    }

    [[nodiscard]] QStringList namesAfter(const QString &key, qsizetype times) const
    {
        QStringList names;
        for (qsizetype time = 0; time < times; ++time)
            names.append(nameAfter(key));
        return names;
    }

    /// False when no number of Tab presses gets there.
    [[nodiscard]] bool tabTo(const QString &name) const
    {
        constexpr int more = 60;
        for (int press = 0; press < more; ++press) {
            if (nameAfter(u"Tab"_s) == name)
                return true;
        }
        return false;
    }

    /// Goes to the button and presses it.
    [[nodiscard]] bool pressButton(const QString &title, const QString &key = u"space"_s) const
    {
        const bool reached = tabTo(title);
        desktop::press(key);
        return reached;
    }

    [[nodiscard]] qsizetype callCount() const { return application().calls().size(); }

    /// Whether a line of the accent colour, two pixels wide, runs at a distance of one beside the control's
    /// middle, where it is not bent by the corners.
    [[nodiscard]] bool isRinged(const AccessibleNode &control, int inset) const
    {
        constexpr int length = 2;
        const QRect place = window().bringIntoView(control).adjusted(-inset, -inset, inset, inset);
        const int top = std::max(place.top(), window().rect().top()) + place.height() / 2 - length / 2;
        const auto accentAt = [&](int distance) {
            return desktop::pixelsNear({place.left() - distance, top, 1, length}, accent) == length;
        };
        return !accentAt(4) && accentAt(3) && accentAt(2) && !accentAt(1);
    }

    [[nodiscard]] AccessibleNode control(const QString &name) const
    {
        const QList<AccessibleNode> candidates = {window().button(name), window().tab(name),
                                                  window().fieldBelow(name)};
        const auto found =
            std::ranges::find_if(candidates, [](const AccessibleNode &node) { return !node.isNull(); });
        return found == candidates.end() ? AccessibleNode() : *found;
    }

private slots:
    void walksRoundAndRoundWhateverIsShown()
    {
        QVERIFY(pressButton(u"Show details"_s));
        QVERIFY(tabTo(u"Bybit"_s));
        QCOMPARE(nameAfter(u"Right"_s), u"OKX"_s);
        desktop::press(u"space"_s);
        QTRY_COMPARE(callCount(), startupCalls + 1);
        QVERIFY(pressButton(u"Open technical log"_s));
        QTRY_COMPARE(window().focused().name(), u"Hide technical log"_s);

        const QStringList controls = {u"load-credentials OKX"_s,
                                      u"status"_s,
                                      u"bind-status"_s,
                                      u"server-health"_s,
                                      u"status"_s,
                                      u"load-credentials Bybit"_s,
                                      u"status"_s,
                                      u"bind-status"_s,
                                      u"server-health"_s,
                                      u"status"_s,
                                      u"Refresh all"_s,
                                      u"Bind token from terminal.brindlecove.example"_s,
                                      u"Claim token"_s,
                                      u"Disconnect"_s,
                                      u"Check server"_s,
                                      u"Hide details"_s,
                                      u"Connector / server"_s,
                                      u"Binding result"_s,
                                      u"Bybit"_s,
                                      u"OKX"_s,
                                      u"Gate"_s,
                                      u"BingX"_s,
                                      u"KuCoin"_s,
                                      u"Bitget"_s,
                                      u"API key"_s,
                                      u"API secret"_s,
                                      u"Passphrase"_s,
                                      u"Validate and save keys"_s,
                                      u"Load balance"_s,
                                      u"Delete"_s,
                                      u"Check for updates"_s,
                                      u"Download update"_s,
                                      u"Install update"_s,
                                      u"Hide technical log"_s};
        QCOMPARE(namesAfter(u"Tab"_s, controls.size()), controls);
        QCOMPARE(namesAfter(u"Tab"_s, controls.size()), controls);

        constexpr int entries = 10;
        QCOMPARE(namesAfter(u"Tab"_s, entries), controls.first(entries));
        QStringList backwards = controls.mid(entries) + controls.first(entries - 1);
        std::ranges::reverse(backwards);
        QCOMPARE(namesAfter(u"shift+Tab"_s, backwards.size()), backwards);
    }

    void claimsTradesUpdatesAndReads()
    {
        QVERIFY(tabTo(u"Bind token from terminal.brindlecove.example"_s));
        desktop::type(u"Token 1"_s);
        QVERIFY(pressButton(u"Claim token"_s));
        QTRY_COMPARE(window().tileWord(u"Binding"_s), u"pending signature"_s);
        QVERIFY(application().calls().contains(QStringList({u"claim-token"_s, u"Token 1"_s})));
        QVERIFY(pressButton(u"Show details"_s, u"Return"_s));
        QTRY_VERIFY(!window().outputBelow(u"Binding result"_s).isNull());
        QTRY_COMPARE_WITH_TIMEOUT(window().tileWord(u"Binding"_s), u"authorized"_s, 20000);

        QVERIFY(tabTo(u"Bybit"_s));
        QCOMPARE(nameAfter(u"Right"_s), u"OKX"_s);
        QCOMPARE(nameAfter(u"Right"_s), u"Gate"_s);
        QCOMPARE(nameAfter(u"Left"_s), u"OKX"_s);
        desktop::press(u"Return"_s);
        QTRY_VERIFY(window().tab(u"OKX"_s).is(State::Selected));
        QTRY_COMPARE(lastCalls(1), QList<QStringList>({{u"load-credentials"_s, u"okx"_s}}));

        for (const QString &field : {u"API key"_s, u"API secret"_s, u"Passphrase"_s}) {
            QVERIFY(tabTo(field));
            desktop::type(u"trade-"_s + field);
        }
        QVERIFY(pressButton(u"Validate and save keys"_s));
        QTRY_VERIFY(window().shows(u"Status: valid"_s));
        QCOMPARE(lastCalls(2),
                 QList<QStringList>({{u"validate"_s, u"okx"_s, u"trade-API key"_s, u"trade-API secret"_s,
                                      u"trade-Passphrase"_s},
                                     {u"balance"_s, u"okx"_s}}));
        QVERIFY(window().shows(u"7645.118204 USDT"_s));
        const QList<std::pair<QString, QStringList>> commands = {
            {u"Load balance"_s, {u"balance"_s, u"okx"_s}},
            {u"Delete"_s, {u"delete-credentials"_s, u"okx"_s}},
            {u"Check for updates"_s, {u"update-check"_s}},
            {u"Download update"_s, {u"update-download"_s}},
            {u"Install update"_s, {u"update-apply"_s}}};
        for (const auto &[title, call] : commands) {
            const qsizetype before = callCount();
            QVERIFY(pressButton(title));
            QTRY_COMPARE(callCount(), before + 1);
            QCOMPARE(lastCalls(1), QList<QStringList>{call});
        }

        QVERIFY(pressButton(u"Open technical log"_s));
        QTRY_COMPARE(window().focused().name(), u"Hide technical log"_s);
        QCOMPARE(nameAfter(u"Tab"_s), u"update-apply"_s);
        desktop::press(u"ctrl+a"_s);
        desktop::press(u"ctrl+c"_s);
        QTRY_COMPARE(desktop::clipboard(),
                     QByteArray("update=applied\nprevious_version=1.3.2\ncurrent_version=1.4.0\n"));
        desktop::press(u"ctrl+Home"_s);
        desktop::press(u"shift+End"_s);
        desktop::press(u"ctrl+c"_s);
        QTRY_COMPARE(desktop::clipboard(), QByteArray("update=applied"));
    }

    void returnInAFieldRunsNothing()
    {
        for (const QString &field :
             {u"Bind token from terminal.brindlecove.example"_s, u"API key"_s, u"API secret"_s}) {
            QVERIFY(tabTo(field));
            desktop::type(u"abc"_s);
            desktop::press(u"Return"_s);
            desktop::press(u"KP_Enter"_s);
            desktop::type(u"d"_s);
            QTRY_COMPARE(window().focused().characterCount(), 4);
        }
        QVERIFY(pressButton(u"Check for updates"_s));
        QTRY_COMPARE(callCount(), startupCalls + 1);
        QCOMPARE(lastCalls(1), QList<QStringList>{QStringList{u"update-check"_s}});
    }

    void onlyTheKeyboardShowsTheFocusRing_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("inset");
        QTest::newRow("plain button") << u"Load balance"_s << 0;
        QTest::newRow("prominent button") << u"Claim token"_s << 0;
        QTest::newRow("selected tab") << u"Bybit"_s << 0;
        QTest::newRow("tab") << u"Gate"_s << 0;
        QTest::newRow("field") << u"API key"_s << 0;
        QTest::newRow("masked field") << u"API secret"_s << 0;
        QTest::newRow("output") << u"Binding result"_s << panelPadding;
    }

    void onlyTheKeyboardShowsTheFocusRing()
    {
        QFETCH(const QString, name);
        QFETCH(const int, inset);
        QVERIFY(window().clickButton(u"Show details"_s));
        QTRY_VERIFY(!control(name).isNull());
        QVERIFY(tabTo(name));
        QTRY_VERIFY(isRinged(control(name), inset));
        QCOMPARE(nameAfter(u"shift+Tab"_s).isEmpty(), false);
        QTRY_VERIFY(!isRinged(control(name), inset));

        QVERIFY(window().click(control(name)));
        QTRY_VERIFY(control(name).is(State::Focused));
        QVERIFY(!QTest::qWaitFor([&] { return isRinged(control(name), inset); }, 300));
    }
};

static const TestClass<TestKeyboardJourney> testKeyboardJourney("tst_keyboardjourney");

#include "tst_keyboardjourney.moc"
