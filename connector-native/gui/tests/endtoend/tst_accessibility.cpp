#include "accessibilityevents.h"
#include "desktop.h"
#include "everythingatstart.h"
#include "processes.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

using Role = AccessibleNode::Role;
using State = AccessibleNode::State;
using Boundary = AccessibleNode::Boundary;

const QMap<Role, QString> roleWords = {{Role::Label, u"label"_s},
                                       {Role::PushButton, u"button"_s},
                                       {Role::PageTab, u"tab"_s},
                                       {Role::Text, u"text"_s},
                                       {Role::PasswordText, u"password"_s}};

QString described(const AccessibleNode &node)
{
    const Role role = node.role();
    const QString word =
        roleWords.value(role, u"role %1 (%2)"_s.arg(static_cast<unsigned>(role)).arg(node.roleName()));
    return word + u": "_s + node.name();
}

QStringList described(const QList<AccessibleNode> &nodes)
{
    QStringList words;
    std::ranges::transform(nodes, std::back_inserter(words),
                           [](const AccessibleNode &node) { return described(node); });
    return words;
}

QStringList sorted(QStringList words)
{
    words.sort();
    return words;
}

/// Whether what lies there is read after what lies here: it begins below its end, or to the right of it.
bool isReadAfter(QRect there, QRect here)
{
    return there.top() >= here.bottom() || there.left() >= here.right();
}

} // namespace

/// What an assistive technology learns of the window.
class TestAccessibility : public WindowTest
{
    Q_OBJECT

    [[nodiscard]] AccessibleNode frame() const { return application().root().children().value(0); }
    [[nodiscard]] QList<AccessibleNode> all(Role role) const
    {
        QList<AccessibleNode> nodes = frame().subtree();
        nodes.removeIf([&](const AccessibleNode &node) { return node.role() != role; });
        return nodes;
    }

    void verifyReadingOrder() const
    {
        const QList<AccessibleNode> nodes = frame().children();
        for (qsizetype index = 1; index < nodes.size(); ++index) {
            const AccessibleNode &here = nodes.at(index - 1);
            const AccessibleNode &there = nodes.at(index);
            QVERIFY2(isReadAfter(there.extents(), here.extents()),
                     qPrintable(described(here) + u" and then "_s + described(there)));
        }
    }

    void openDetails()
    {
        QVERIFY(window().clickButton(u"Show details"_s));
        QTRY_VERIFY(!window().outputBelow(u"Binding result"_s).isNull());
    }

    static void fieldsAsRows()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("shown");
        QTest::newRow("plain") << u"API key"_s << u"iWord"_s;
        QTest::newRow("masked") << u"API secret"_s << u"•••••"_s;
    }

private slots:
    void theWindowIsAFrameOfLeaves()
    {
        QCOMPARE(application().root().children().size(), 1);
        QCOMPARE(frame().role(), Role::Frame);
        QCOMPARE(frame().name(), u"Brindlecove Connector"_s);
        for (const AccessibleNode &node : frame().children())
            QVERIFY2(node.children().isEmpty(), qPrintable(described(node)));
    }

    void everythingIsThereOnceInReadingOrder()
    {
        QCOMPARE(described(frame().children()), everythingAtStart());
        verifyReadingOrder();
        QStringList paths;
        for (const AccessibleNode &node : frame().subtree())
            paths.append(node.path());
        QCOMPARE(paths.removeDuplicates(), 0);
    }

    void whatAppearsTakesItsPlaceInTheOrder()
    {
        openDetails();
        select(u"OKX"_s);
        QVERIFY(window().clickButton(u"Load balance"_s));
        QTRY_VERIFY(window().shows(u"Could not load balance"_s));
        const QStringList shown = described(frame().children());
        for (const QStringList &part :
             {QStringList{u"button: Hide details"_s, u"label: Connector / server"_s,
                          u"text: Connector / server"_s, u"label: Binding result"_s,
                          u"text: Binding result"_s, u"label: Exchange API"_s},
              QStringList{u"password: API secret"_s, u"label: Passphrase"_s, u"password: Passphrase"_s,
                          u"button: Validate and save keys"_s},
              QStringList{u"label: Status: not checked"_s, u"label: Balance"_s,
                          u"label: Could not load balance"_s, u"label: credentials not found"_s}})
            QCOMPARE(shown.mid(shown.indexOf(part.constFirst()), part.size()), part);
        verifyReadingOrder();
    }

    void whatIsHiddenAgainIsGone()
    {
        openDetails();
        openLog();
        select(u"OKX"_s);
        select(u"Bybit"_s);
        QVERIFY(window().clickButton(u"Hide details"_s));
        QVERIFY(window().clickButton(u"Hide technical log"_s));
        QStringList expected = everythingAtStart();
        expected.replaceInStrings(u"label: 9 "_s, u"label: 11 "_s);
        QTRY_COMPARE(described(frame().children()), expected);
    }

    void everyButtonCanBePressedAndFocused()
    {
        const QList<AccessibleNode> buttons = all(Role::PushButton);
        QCOMPARE(buttons.size(), everythingAtStart().filter(u"button: "_s).size());
        for (const AccessibleNode &button : buttons) {
            QCOMPARE(sorted(button.actions()), QStringList({u"Press"_s, u"SetFocus"_s}));
            QVERIFY2(button.is(State::Focusable), qPrintable(described(button)));
            QVERIFY(button.act(u"SetFocus"_s));
            QTRY_VERIFY2(button.is(State::Focused), qPrintable(described(button)));
        }
        QVERIFY(window().button(u"Check for updates"_s).act(u"Press"_s));
        QTRY_COMPARE(application().calls().size(), startupCalls + 1);
        QCOMPARE(application().calls().constLast(), QStringList{u"update-check"_s});
    }

    void onlyTheSelectedTabIsSelected()
    {
        const QList<AccessibleNode> tabs = all(Role::PageTab);
        const auto selected = [&] {
            QStringList names;
            for (const AccessibleNode &tab : tabs)
                names.append(tab.is(State::Selected) ? tab.name() : QString());
            names.removeAll(QString());
            return names;
        };
        QCOMPARE(selected(), QStringList{u"Bybit"_s});
        for (const AccessibleNode &tab : tabs) {
            QVERIFY(tab.is(State::Selectable) && tab.is(State::Focusable));
            QCOMPARE(sorted(tab.actions()), QStringList({u"Press"_s, u"SetFocus"_s}));
            QVERIFY(tab.act(u"Press"_s));
            QTRY_COMPARE(selected(), QStringList{tab.name()});
        }
    }

    void everyFieldCanBeEdited()
    {
        select(u"KuCoin"_s);
        const QList<AccessibleNode> fields = all(Role::Text) + all(Role::PasswordText);
        QCOMPARE(described(fields),
                 QStringList({u"text: Bind token from terminal.brindlecove.example"_s, u"text: API key"_s,
                              u"password: API secret"_s, u"password: Passphrase"_s}));
        for (const AccessibleNode &field : fields) {
            QVERIFY2(field.is(State::Editable), qPrintable(described(field)));
            QVERIFY2(field.is(State::Focusable), qPrintable(described(field)));
            QVERIFY2(!field.is(State::ReadOnly), qPrintable(described(field)));
        }
    }

    void whatIsWrittenIntoAFieldStaysOneLine()
    {
        QVERIFY(window().tokenField().setText(u"tok\r\nen\n"_s));
        QVERIFY(window().fieldBelow(u"API key"_s).setText(u"first"_s));
        QVERIFY(window().fieldBelow(u"API key"_s).setText(u"\nk\re\u2028y"_s));
        QVERIFY(window().fieldBelow(u"API secret"_s).setText(u"hem\nlig"_s));
        QCOMPARE(window().tokenField().text(), u"token"_s);
        QVERIFY(window().button(u"Validate and save keys"_s).act(u"Press"_s));
        QTRY_VERIFY(application().calls().size() > startupCalls);
        const QStringList call{u"validate"_s, u"bybit"_s, u"key"_s, u"hemlig"_s};
        QCOMPARE(application().calls().at(startupCalls), call);
    }

    void outputsAreReadWholeAndLineByLine()
    {
        QVERIFY(application().installPrinter("first = ключ\n\nthird \0line\nlast"_ba));
        QVERIFY(window().clickButton(u"Check for updates"_s));
        QTRY_VERIFY(window().shows(u"10 command log entries available"_s));
        openLog();
        const AccessibleNode output = window().outputBelow(u"update-check"_s);
        const auto text = u"first = ключ\n\nthird \u2400line\nlast"_s;
        QCOMPARE(output.text(), text);
        QCOMPARE(output.characterCount(), text.size());
        QVERIFY(output.is(State::ReadOnly) && output.is(State::Focusable) && !output.is(State::Editable));
        const QStringList lines = text.split(u'\n');
        qsizetype offset = 0;
        for (const QString &line : lines) {
            QCOMPARE(output.textAt(static_cast<int>(offset), Boundary::Line).remove(u'\n'), line);
            offset += line.size() + 1;
        }
    }

    // A screen reader asks for these pieces when the cursor has moved; Qt's own answer may never come.
    void aMaskedFieldAnswersAtItsStart()
    {
        typeInto(u"API secret"_s, u"hemlig"_s);
        desktop::press(u"Home"_s);
        const AccessibleNode field = window().fieldBelow(u"API secret"_s);
        const qint64 before = processorTime(application().processId());
        QCOMPARE(field.textAt(0, Boundary::Character), u"•"_s);
        for (const Boundary boundary : {Boundary::Word, Boundary::Sentence, Boundary::Line})
            QCOMPARE(field.textAt(0, boundary), u"••••••"_s);
        QVERIFY(processorTime(application().processId()) - before < 1000);
    }

    void anOutputAnswersAtItsEnd()
    {
        QVERIFY(application().installPrinter("failed to run connector: no such file"));
        QVERIFY(window().clickButton(u"Check for updates"_s));
        QTRY_VERIFY(window().shows(u"10 command log entries available"_s));
        openLog();
        const AccessibleNode output = window().outputBelow(u"update-check"_s);
        QVERIFY(window().click(output));
        desktop::press(u"ctrl+End"_s);
        const int end = output.characterCount();
        const qint64 before = processorTime(application().processId());
        QCOMPARE(output.textAt(end, Boundary::Character), QString());
        QCOMPARE(output.textAt(end, Boundary::Word), u"file"_s);
        for (const Boundary boundary : {Boundary::Sentence, Boundary::Line})
            QCOMPARE(output.textAt(end, boundary), u"failed to run connector: no such file"_s);
        QVERIFY(processorTime(application().processId()) - before < 1000);
    }

    void recycledLogEntriesStayInOrder()
    {
        for (int run = 0; run < 3; ++run)
            QVERIFY(window().clickButton(u"Refresh all"_s));
        QTRY_VERIFY(window().shows(u"21 command log entries available"_s));
        openLog();
        QCOMPARE(window().log().size(), 21);
        verifyReadingOrder();
        static_cast<void>(window().newestLogEntry());
        verifyReadingOrder();
        QVERIFY(window().clickButton(u"Refresh all"_s));
        QTRY_COMPARE(application().calls().size(), startupCalls + 16);
        verifyReadingOrder();
    }

    void aLogEntryThatIsRecycledIsToldToBeGone()
    {
        for (int run = 0; run < 3; ++run)
            QVERIFY(window().clickButton(u"Refresh all"_s));
        QTRY_VERIFY(window().shows(u"21 command log entries available"_s));
        openLog();
        const QString path = window().label(u"server-health"_s).path();
        const AccessibilityEvents events;
        QCOMPARE(window().log().size(), 21);
        QTRY_VERIFY(events.hasGone(path));
    }

    void theOutcomeOfTheStartIsSpoken()
    {
        renew();
        const AccessibilityEvents events;
        start();
        const QStringList outcome{u"Connector: pairing required, Server: reachable"_s};
        QTRY_COMPARE(events.spoken(application().root()), outcome);
    }

    void anActionIsSpokenInOneSentence()
    {
        const AccessibilityEvents events;
        QStringList sentences;
        const auto isSpokenNow = [&](const QString &sentence) {
            sentences.append(sentence);
            return QTest::qWaitFor([&] { return events.spoken(application().root()) == sentences; });
        };
        QVERIFY(window().fill(window().tokenField(), u"Token"_s));
        QVERIFY(window().clickButton(u"Claim token"_s));
        QVERIFY(isSpokenNow(u"Binding: pending signature, Connector: ready"_s));
        // The rounds before it change nothing, and say nothing.
        QTRY_COMPARE_WITH_TIMEOUT(window().tileWord(u"Binding"_s), u"authorized"_s, 20000);
        QVERIFY(isSpokenNow(u"Binding: authorized"_s));

        select(u"OKX"_s);
        QVERIFY(isSpokenNow(u"Exchange API: OKX"_s));
        for (const QString &field : {u"API key"_s, u"API secret"_s, u"Passphrase"_s})
            typeInto(field, u"trade-"_s + field);
        QVERIFY(window().clickButton(u"Validate and save keys"_s));
        QVERIFY(isSpokenNow(u"Status: valid, Balance: 7645.118204 USDT"_s));
        QVERIFY(window().clickButton(u"Delete"_s));
        QVERIFY(isSpokenNow(u"Status: not configured, Balance not loaded yet"_s));
        for (const QString &step : {u"Check for updates"_s, u"Download update"_s}) {
            QVERIFY(window().clickButton(step));
            QVERIFY(isSpokenNow(u"Update action completed"_s));
        }
        QVERIFY(window().clickButton(u"Check server"_s));
        openLog();
        const QString log = u"Technical log: %1 entries"_s.arg(application().calls().size());
        QVERIFY(isSpokenNow(log));
    }

    void shownAndHiddenDetailsAreSpoken()
    {
        const AccessibilityEvents events;
        QVERIFY(window().clickButton(u"Show details"_s));
        QStringList sentences{u"Token and bind details: shown"_s};
        QTRY_COMPARE(events.spoken(application().root()), sentences);
        QVERIFY(window().clickButton(u"Hide details"_s));
        sentences.append(u"Token and bind details: hidden"_s);
        QTRY_COMPARE(events.spoken(application().root()), sentences);
    }

    void aToggleTellsWhetherItIsExpanded_data()
    {
        QTest::addColumn<QString>("open");
        QTest::addColumn<QString>("close");
        QTest::newRow("details") << u"Show details"_s << u"Hide details"_s;
        QTest::newRow("log") << u"Open technical log"_s << u"Hide technical log"_s;
    }

    void aToggleTellsWhetherItIsExpanded()
    {
        QFETCH(const QString, open);
        QFETCH(const QString, close);
        const AccessibleNode toggle = window().button(open);
        QVERIFY(toggle.is(State::Expandable) && toggle.is(State::Collapsed));
        QVERIFY(!toggle.is(State::Expanded));
        QVERIFY(window().clickButton(open));
        QTRY_VERIFY(!window().button(close).isNull());
        QVERIFY(toggle.is(State::Expandable) && toggle.is(State::Expanded));
        QVERIFY(!toggle.is(State::Collapsed));
        QVERIFY(!window().button(u"Check server"_s).is(State::Expandable));
    }

    void whatIsScrolledAwayIsStillShown()
    {
        const QList<AccessibleNode> nodes = frame().children();
        QVERIFY(nodes.constLast().extents().top() > window().rect().bottom());
        for (const AccessibleNode &node : nodes)
            QVERIFY2(node.is(State::Visible) && node.is(State::Showing), qPrintable(described(node)));
    }

    void whatAppearsAndGoesIsTold()
    {
        const AccessibilityEvents events;
        select(u"OKX"_s);
        openDetails();
        const QStringList paths{window().label(u"Passphrase"_s).path(),
                                window().fieldBelow(u"Passphrase"_s).path(),
                                window().label(u"Binding result"_s).path()};
        for (const QString &path : paths)
            QTRY_VERIFY(events.hasAppeared(path));
        select(u"Bybit"_s);
        QVERIFY(window().clickButton(u"Hide details"_s));
        for (const QString &path : paths)
            QTRY_VERIFY(events.hasGone(path));
    }

    void theSelectedTabIsTold()
    {
        const AccessibleNode before = window().tab(u"Bybit"_s);
        const AccessibleNode after = window().tab(u"OKX"_s);
        QCOMPARE(before.description(), u"selected"_s);
        QCOMPARE(after.description(), QString());
        const AccessibilityEvents events;
        select(u"OKX"_s);
        for (const AccessibleNode &tab : {before, after})
            QTRY_VERIFY2(events.has(tab.path(), u"StateChanged:selected"_s), qPrintable(tab.name()));
        QCOMPARE(before.description(), QString());
        QCOMPARE(after.description(), u"selected"_s);
    }

    void aChangedStatusWordIsAnnounced()
    {
        const AccessibilityEvents events;
        const QString tile = window().label(u"not bound"_s).path();
        const QString line =
            window().label(u"Connector: pairing required • Server: reachable • Binding: not bound"_s).path();
        QVERIFY(window().fill(window().tokenField(), u"Token"_s));
        QVERIFY(window().clickButton(u"Claim token"_s));
        QTRY_VERIFY(events.has(tile, u"PropertyChange:accessible-name"_s));
        QTRY_VERIFY(events.has(line, u"PropertyChange:accessible-name"_s));
        QCOMPARE(window().tileWord(u"Binding"_s), u"pending signature"_s);
    }

    void aFilledFieldIsReadAsItsText_data() { fieldsAsRows(); }

    // A screen reader that misses any of these reads the field's name in place of its text.
    void aFilledFieldIsReadAsItsText()
    {
        QFETCH(const QString, caption);
        QFETCH(const QString, shown);
        typeInto(caption, u"iWord"_s);
        const AccessibleNode field = window().fieldBelow(caption);
        QVERIFY(!window().bringIntoView(field).isEmpty());
        QCOMPARE(field.text(), shown);
        QCOMPARE(field.attributeRun(2), qMakePair(0, 5));
        QRect previous(field.extents().topLeft(), QSize(0, 0));
        for (int offset = 0; offset < 5; ++offset) {
            const QRect place = field.characterExtents(offset);
            QVERIFY(!place.isEmpty());
            QVERIFY(field.extents().contains(place));
            QVERIFY(place.left() > previous.left());
            QCOMPARE(field.offsetAt(place.center()), offset);
            previous = place;
        }
        QCOMPARE(field.offsetAt(field.extents().topRight() + QPoint(20, 0)), -1);
    }

    void cursorAndSelectionOfAFieldAreAnnounced_data() { fieldsAsRows(); }

    void cursorAndSelectionOfAFieldAreAnnounced()
    {
        QFETCH(const QString, caption);
        typeInto(caption, u"iWord"_s);
        const AccessibleNode field = window().fieldBelow(caption);
        const AccessibilityEvents events;
        const auto count = [&](const QString &kind) { return events.texts(field.path(), kind).size(); };
        desktop::press(u"Left"_s);
        QTRY_COMPARE(count(u"TextCaretMoved:"_s), 1);
        QCOMPARE(count(u"TextSelectionChanged:"_s), 0);
        desktop::press(u"ctrl+a"_s);
        QTRY_COMPARE(count(u"TextSelectionChanged:"_s), 1);
        QCOMPARE(field.selection(), qMakePair(0, 5));
        desktop::press(u"Home"_s);
        QTRY_COMPARE(count(u"TextSelectionChanged:"_s), 2);
        QCOMPARE(count(u"TextCaretMoved:"_s), 3);
    }

    void whatIsTypedIntoAFieldIsAnnounced()
    {
        const AccessibilityEvents events;
        const QString field = window().tokenField().path();
        QVERIFY(window().fill(window().tokenField(), u"To"_s));
        const QStringList letters{u"T"_s, u"o"_s};
        QTRY_COMPARE(events.texts(field, u"TextChanged:insert"_s), letters);
    }

    void cursorAndSelectionOfAnOutputAreAnnounced()
    {
        QVERIFY(application().installPrinter("first\nsecond"));
        QVERIFY(window().clickButton(u"Check for updates"_s));
        QTRY_VERIFY(window().shows(u"10 command log entries available"_s));
        openLog();
        const AccessibleNode output = window().outputBelow(u"update-check"_s);
        QVERIFY(window().click(output));
        QTRY_VERIFY(output.is(State::Focused));
        desktop::press(u"ctrl+Home"_s);
        QTRY_COMPARE(output.cursor(), 0);

        const AccessibilityEvents events;
        const auto count = [&](const QString &kind) { return events.texts(output.path(), kind).size(); };
        desktop::press(u"Down"_s);
        QTRY_COMPARE(count(u"TextCaretMoved:"_s), 1);
        QCOMPARE(output.cursor(), 6);
        QCOMPARE(count(u"TextSelectionChanged:"_s), 0);
        desktop::press(u"shift+End"_s);
        QTRY_COMPARE(count(u"TextSelectionChanged:"_s), 1);
        QCOMPARE(output.selection(), qMakePair(6, 12));
        QTRY_COMPARE(count(u"TextCaretMoved:"_s), 2);
        desktop::press(u"Home"_s);
        QTRY_COMPARE(count(u"TextSelectionChanged:"_s), 2);
        QTRY_COMPARE(count(u"TextCaretMoved:"_s), 3);
    }

    // Only what is different, so that a screen reader keeps its place in the rest.
    void whatChangesInAnOutputIsAnnounced()
    {
        openDetails();
        const AccessibleNode output = window().outputBelow(u"Connector / server"_s);
        const auto show = [&](const QByteArray &text) {
            QVERIFY(application().installPrinter(text));
            QVERIFY(window().clickButton(u"Check server"_s));
            QTRY_VERIFY(output.text().endsWith(QString::fromUtf8(text)));
        };
        show("one\ntwo\nthree");
        const AccessibilityEvents events;
        show("one\n2\nthree");
        QTRY_COMPARE(events.texts(output.path(), u"TextChanged:insert"_s), QStringList{u"2"_s});
        QCOMPARE(events.texts(output.path(), u"TextChanged:delete"_s), QStringList{u"two"_s});
    }
};

static const TestClass<TestAccessibility> testAccessibility("tst_accessibility");

#include "tst_accessibility.moc"
