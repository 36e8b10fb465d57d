#include "accessibilityevents.h"
#include "busrecording.h"
#include "desktop.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// No word or number of the window is a part of them.
const auto openKey = u"QvopenKeyKJx"_s;
const auto secret = u"ZqhemligWkX"_s;
const auto passphrase = u"XwtystnadQzJ"_s;
const auto before = u"what was there before"_s;

/// As a message has a text that stands alone: behind its length, and ended by a null.
QString keyTold(const QString &key)
{
    return QChar(static_cast<char16_t>(key.size())) + QString(3, QChar::Null) + key + QChar::Null;
}

/// Of a secret, as it is and as it would be in a text made of 16 bit units.
bool holds(const QByteArray &bytes, const QString &text)
{
    return bytes.contains(text.toUtf8())
        || bytes.contains(QByteArrayView(reinterpret_cast<const char *>(text.utf16()), 2 * text.size()));
}

} // namespace

/// What is typed into a masked field leaves the program by no way but the connector's command line.
class TestSecrecy : public WindowTest
{
    Q_OBJECT

    [[nodiscard]] AccessibleNode field(const QString &caption) const { return window().fieldBelow(caption); }

    [[nodiscard]] QStringList everythingTold() const
    {
        QStringList told;
        const QList<AccessibleNode> nodes = application().root().subtree();
        for (const AccessibleNode &node : nodes)
            told.append(node.everythingTold());
        return told;
    }

    void selectionsHold(const QString &text)
    {
        QCOMPARE(desktop::clipboard(), text.toUtf8());
        QCOMPARE(desktop::primarySelection(), text.toUtf8());
    }

private slots:
    void init() override
    {
        WindowTest::init();
        desktop::setClipboard(before);
        desktop::setPrimarySelection(before);
    }

    void nothingOnTheBusesHoldsASecret()
    {
        select(u"OKX"_s);
        BusRecording accessibility(BusRecording::accessibilityAddress());
        BusRecording session(BusRecording::sessionAddress());
        const AccessibilityEvents events;
        typeInto(u"API key"_s, openKey);
        typeInto(u"API secret"_s, secret);
        typeInto(u"Passphrase"_s, passphrase);
        desktop::press(u"BackSpace"_s);
        QTRY_COMPARE(field(u"Passphrase"_s).characterCount(), passphrase.size() - 1);

        const QString told = everythingTold().join(u'\n');
        QVERIFY(told.contains(openKey));
        QVERIFY(!told.contains(secret));
        QVERIFY(!told.contains(passphrase.chopped(1)));
        QTRY_VERIFY(holds(accessibility.bytes(), openKey));
        for (const QString &text : {secret, passphrase, passphrase.chopped(1)}) {
            QVERIFY(!holds(accessibility.bytes(), text));
            QVERIFY(!holds(session.bytes(), text));
        }
    }

    void noEventTellsATypedCharacter_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::newRow("secret") << u"API secret"_s;
        QTest::newRow("passphrase") << u"Passphrase"_s;
    }

    void noEventTellsATypedCharacter()
    {
        QFETCH(const QString, caption);
        select(u"OKX"_s);
        const AccessibilityEvents events;
        typeInto(caption, secret);
        desktop::press(u"shift+Left"_s);
        desktop::press(u"BackSpace"_s);
        const QString path = field(caption).path();
        QTRY_VERIFY(std::ranges::any_of(events.all(), [&](const AccessibilityEvent &event) {
            return event.path == path && event.kind == u"TextChanged:delete" && event.text == u"•"_s;
        }));
        for (const AccessibilityEvent &event : events.all())
            QVERIFY2(event.text.isEmpty() || !secret.contains(event.text), qPrintable(event.kind));
    }

    // Assistive technologies are asked about each key before the window sees it.
    void noKeyThatTypesIntoAMaskedFieldIsTold()
    {
        BusRecording accessibility(BusRecording::accessibilityAddress());
        const AccessibilityEvents events;
        typeInto(u"API secret"_s, u"Qj7"_s);
        // With the modifier of its commands held, a screen reader must learn which one is meant.
        desktop::press(u"Insert+x"_s);
        desktop::press(u"Home"_s);
        typeInto(u"API key"_s, u"+"_s);
        QTRY_VERIFY(holds(accessibility.bytes(), keyTold(u"+"_s)));
        QVERIFY(accessibility.bytes().contains("NotifyListenersSync"));
        QVERIFY(holds(accessibility.bytes(), keyTold(u"Home"_s)));
        QVERIFY(holds(accessibility.bytes(), keyTold(u"x"_s)));
        for (const QString &key : {u"Q"_s, u"j"_s, u"7"_s})
            QVERIFY2(!holds(accessibility.bytes(), keyTold(key)), qPrintable(key));
    }

    void keysCopyNothing_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::newRow("copy") << u"ctrl+c"_s;
        QTest::newRow("cut") << u"ctrl+x"_s;
        QTest::newRow("copy as it once was") << u"ctrl+Insert"_s;
        QTest::newRow("cut as it once was") << u"shift+Delete"_s;
    }

    void keysCopyNothing()
    {
        QFETCH(const QString, keys);
        typeInto(u"API secret"_s, secret);
        desktop::press(u"ctrl+a"_s);
        desktop::press(keys);
        // What comes after it has been copied is there only when that has been done.
        desktop::press(u"End"_s);
        desktop::type(u"+"_s);
        const AccessibleNode masked = field(u"API secret"_s);
        QTRY_VERIFY(masked.characterCount() == secret.size() + 1 || masked.characterCount() == 1);
        selectionsHold(before);
    }

    void theMouseTakesNothingAlong()
    {
        typeInto(u"API secret"_s, secret);
        const QRect from = window().bringIntoView(field(u"API secret"_s));
        const QRect to = field(u"API key"_s).extents();
        desktop::drag(from.center() - QPoint(from.width() / 2 - 4, 0), from.center());
        selectionsHold(before);
        desktop::doubleClickAt(from.topLeft() + QPoint(20, from.height() / 2));
        selectionsHold(before);

        desktop::press(u"ctrl+a"_s);
        desktop::drag(from.topLeft() + QPoint(30, from.height() / 2), to.center());
        desktop::middleClickAt(to.center());
        // With what was selected elsewhere before: that the click has been seen to, and with nothing else.
        QTRY_COMPARE(field(u"API key"_s).text(), before);
        selectionsHold(before);
        QCOMPARE(field(u"API secret"_s).characterCount(), secret.size());
    }

    void undoingBringsBackNoOtherExchangesSecret()
    {
        typeInto(u"API secret"_s, secret);
        select(u"Gate"_s);
        QTRY_COMPARE(field(u"API secret"_s).characterCount(), 0);
        QVERIFY(window().click(field(u"API secret"_s)));
        for (const QString &keys : {u"ctrl+z"_s, u"ctrl+z"_s, u"ctrl+shift+z"_s, u"ctrl+y"_s})
            desktop::press(keys);
        desktop::type(u"+"_s);
        QTRY_COMPARE(field(u"API secret"_s).text(), u"•"_s);
    }

    void theLogTellsNoArgument()
    {
        typeInto(u"API key"_s, openKey);
        typeInto(u"API secret"_s, secret);
        QVERIFY(application().installPrinter("status=invalid\n"));
        QVERIFY(window().clickButton(u"Validate and save keys"_s));
        QTRY_VERIFY(window().shows(u"Status: invalid"_s));
        QVERIFY(window().clickButton(u"Open technical log"_s));
        QTRY_COMPARE(window().newestLogEntry(), (LogEntry{u"validate Bybit"_s, u"status=invalid\n"_s}));
        const QString told = everythingTold().join(u'\n');
        QVERIFY(told.contains(openKey));
        QVERIFY(!told.contains(secret));
        QCOMPARE(window().log().value(1).output.contains(secret), false);
    }
};

static const TestClass<TestSecrecy> testSecrecy("tst_secrecy");

#include "tst_secrecy.moc"
