#include "accessibilityevents.h"
#include "desktop.h"
#include "processes.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using State = AccessibleNode::State;

} // namespace

/// The context menu of a field, as the pointer and a screen reader find it.
class TestFieldMenu : public ActiveWindowTest
{
    Q_OBJECT

    [[nodiscard]] QStringList enabledEntries() const
    {
        QStringList names;
        const QList<AccessibleNode> all = window().menu();
        for (const AccessibleNode &entry : all) {
            if (entry.is(State::Enabled))
                names.append(entry.name());
        }
        return names;
    }

    void openMenu(const AccessibleNode &field) const
    {
        desktop::rightClickAt(window().bringIntoView(field).center());
        QTRY_VERIFY(!window().menu().isEmpty());
    }

    [[nodiscard]] QByteArray maps() const { return processFile(application().processId(), u"maps"_s); }

private slots:
    void nothingOfItIsLoadedBeforeItIsAskedFor()
    {
        QVERIFY(maps().contains("libQt6Quick"));
        QVERIFY(!maps().contains("QuickTemplates"));
        openMenu(window().tokenField());
        QVERIFY(maps().contains("QuickTemplates"));
    }

    void aTokenIsPastedAndClaimedWithTheMouseAlone()
    {
        desktop::setClipboard(u"bt-7f3a\n-91c2\n"_s);
        chooseFromMenu(window().tokenField(), u"Paste"_s);
        QTRY_COMPARE(window().tokenField().text(), u"bt-7f3a-91c2"_s);
        QVERIFY(window().clickButton(u"Claim token"_s));
        QTRY_VERIFY(application().calls().size() > startupCalls);
        QCOMPARE(application().calls().at(startupCalls), QStringList({u"claim-token"_s, u"bt-7f3a-91c2"_s}));

        chooseFromMenu(window().tokenField(), u"Select all"_s);
        chooseFromMenu(window().tokenField(), u"Cut"_s);
        QTRY_COMPARE(window().tokenField().text(), QString());
        QTRY_COMPARE(desktop::clipboard(), QByteArray("bt-7f3a-91c2"));
    }

    void theMiddleButtonPastesOneLine_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("plain") << u"API key"_s << QStringList{u"abcd"_s, QString()};
        QTest::newRow("masked") << u"API secret"_s << QStringList{QString(), u"abcd"_s};
    }

    void theMiddleButtonPastesOneLine()
    {
        QFETCH(const QString, caption);
        QFETCH(const QStringList, arguments);
        desktop::setPrimarySelection(u"ab\ncd\r\n"_s);
        const AccessibleNode field = window().fieldBelow(caption);
        desktop::middleClickAt(window().bringIntoView(field).center());
        QTRY_COMPARE(field.characterCount(), 4);
        QVERIFY(window().clickButton(u"Validate and save keys"_s));
        QTRY_VERIFY(application().calls().size() > startupCalls);
        QCOMPARE(application().calls().at(startupCalls).mid(2), arguments);
    }

    // Nothing waits for the text that the X server has to fetch.
    void aSecretPastedByTheMiddleButtonOutlivesWhatIsTypedNext_data()
    {
        QTest::addColumn<QString>("pasted");
        QTest::newRow("one line") << u"secret"_s;
        QTest::newRow("lines") << u"sec\nret\n"_s;
    }

    void aSecretPastedByTheMiddleButtonOutlivesWhatIsTypedNext()
    {
        QFETCH(const QString, pasted);
        for (const QString &exchange : {u"Bybit"_s, u"Gate"_s, u"BingX"_s}) {
            select(exchange);
            desktop::setPrimarySelection(pasted);
            const AccessibleNode secret = window().fieldBelow(u"API secret"_s);
            const AccessibleNode key = window().fieldBelow(u"API key"_s);
            const QPoint keyPlace = window().bringIntoView(key).center();
            desktop::middleClickAt(window().bringIntoView(secret).center());
            desktop::clickAt(keyPlace);
            desktop::type(u"unsaved-key"_s);
            QTRY_COMPARE(key.text(), u"unsaved-key"_s);
            QCOMPARE(secret.characterCount(), 6);
            QVERIFY(window().clickButton(u"Validate and save keys"_s));
            const QStringList expected{u"validate"_s, exchange.toLower(), u"unsaved-key"_s, u"secret"_s};
            QTRY_VERIFY(application().calls().contains(expected));
        }
    }

    void aScreenReaderFollowsTheHighlight()
    {
        const AccessibilityEvents events;
        const AccessibleNode field = window().tokenField();
        typeInto(u"API key"_s, u"abc"_s);
        QVERIFY(window().fill(field, u"token"_s));
        QTRY_COMPARE(field.text(), u"token"_s);
        desktop::setClipboard(QString());
        desktop::press(u"shift+F10"_s);
        QTRY_VERIFY(window().menuEntry(u"Undo"_s).is(State::Focused));
        QVERIFY(enabledEntries().contains(u"Select all"_s));
        QVERIFY(!enabledEntries().contains(u"Copy"_s));
        QCOMPARE(window().menu().size(), 7);
        desktop::press(u"s"_s);
        QTRY_VERIFY(window().menuEntry(u"Select all"_s).is(State::Focused));
        QTRY_VERIFY(events.has(window().menuEntry(u"Select all"_s).path(), u"StateChanged:focused"_s));
        QVERIFY(window().menuEntry(u"Select all"_s).act(u"Press"_s));
        QTRY_VERIFY(window().menu().isEmpty());
        QTRY_VERIFY(field.is(State::Focused));
        desktop::press(u"x"_s);
        QTRY_COMPARE(field.text(), u"x"_s);
    }

    // With the role of a text, Qt would send a stored text with the event that it has changed.
    void aStoredSecretIsInNoEvent()
    {
        typeInto(u"API key"_s, u"trade-QvopenKeyKJx"_s);
        typeInto(u"API secret"_s, u"trade-ZqhemligWkX"_s);
        QVERIFY(window().clickButton(u"Validate and save keys"_s));
        QTRY_VERIFY(window().shows(u"Status: valid"_s));
        select(u"Gate"_s);
        QTRY_COMPARE(window().fieldBelow(u"API secret"_s).characterCount(), 0);
        const AccessibilityEvents events;
        select(u"Bybit"_s);
        QTRY_COMPARE(window().fieldBelow(u"API secret"_s).characterCount(), 17);
        select(u"Gate"_s);
        QTRY_COMPARE(window().fieldBelow(u"API secret"_s).characterCount(), 0);
        const auto holds = [&](const QString &text) {
            return std::ranges::any_of(
                events.all(), [&](const AccessibilityEvent &event) { return event.text.contains(text); });
        };
        QTRY_VERIFY(holds(QString(17, u'•')));
        QVERIFY(holds(u"trade-QvopenKeyKJx"_s));
        QVERIFY(!holds(u"trade-ZqhemligWkX"_s));
    }
};

static const TestClass<TestFieldMenu> testFieldMenu("tst_fieldmenu");

#include "tst_fieldmenu.moc"
