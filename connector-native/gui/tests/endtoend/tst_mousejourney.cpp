#include "desktop.h"
#include "support/testprogram.h"
#include "windowtest.h"

using namespace Qt::StringLiterals;

/// A trader's whole day without a keyboard: what is entered is pasted by the context menu.
class TestMouseJourney : public ActiveWindowTest
{
    Q_OBJECT

    void pasteInto(const AccessibleNode &field, const QString &text) const
    {
        desktop::setClipboard(text);
        chooseFromMenu(field, u"Paste"_s);
        QTRY_COMPARE(field.characterCount(), text.size());
    }

    void pressAndExpect(const QString &title, const QStringList &call) const
    {
        const auto before = application().calls().size();
        QVERIFY(window().clickButton(title));
        QTRY_COMPARE(application().calls().size(), before + 1);
        QCOMPARE(lastCalls(1), QList<QStringList>{call});
    }

    /// Where the page is scrolled to, seen from its heading.
    [[nodiscard]] int headingTop() const { return window().pageHeading().extents().top(); }

    /// A point of the page's scroll bar, by its share of the bar's height.
    [[nodiscard]] QPoint onScrollBar(qreal share) const
    {
        const QRect page = window().rect();
        return {page.right() - 6, page.top() + qRound(page.height() * share)};
    }

    void scrollsByWheelAndBar() const
    {
        const QPoint margin(window().rect().left() + 8, window().rect().center().y());
        // Further than the page is long.
        desktop::turnWheel(margin, desktop::Wheel::Down, 100);
        QVERIFY(window().waitUntilStill());
        const int bottom = headingTop();
        desktop::drag(onScrollBar(0.98), onScrollBar(0));
        QTRY_VERIFY(headingTop() > window().rect().top());
        const int top = headingTop();
        desktop::turnWheel(margin, desktop::Wheel::Down, 1);
        QTRY_VERIFY(headingTop() < top);
        const int step = top - headingTop();
        desktop::turnWheel(margin, desktop::Wheel::Up, 2);
        QTRY_COMPARE(headingTop(), top);
        // Beside the thumb a click turns a page.
        desktop::clickAt(onScrollBar(0.98));
        QTRY_VERIFY(headingTop() < top);
        QVERIFY(headingTop() > bottom);
        desktop::turnWheel(margin, desktop::Wheel::Up, 100);
        QTRY_COMPARE(headingTop(), top);
        desktop::drag(onScrollBar(0.02), onScrollBar(1));
        QTRY_VERIFY(headingTop() < top);
        QVERIFY(window().waitUntilStill());
        const int end = headingTop();
        // At the end, of two turns of the wheel only the one back moves the page. Where that is can have
        // changed: a slow window skips log entries, whose heights are estimates until they are in view.
        desktop::turnWheel(margin, desktop::Wheel::Down, 1);
        desktop::turnWheel(margin, desktop::Wheel::Up, 1);
        QTRY_COMPARE(headingTop(), end + step);
    }

private slots:
    void claimsTradesUpdatesReadsAndCloses()
    {
        pasteInto(window().tokenField(), u"Token 1"_s);
        QCOMPARE(window().tokenField().text(), u"Token 1"_s);
        QVERIFY(window().clickButton(u"Claim token"_s));
        QTRY_COMPARE(window().tileWord(u"Binding"_s), u"pending signature"_s);
        QVERIFY(application().calls().contains(QStringList({u"claim-token"_s, u"Token 1"_s})));
        QVERIFY(window().clickButton(u"Show details"_s));
        QTRY_VERIFY(!window().outputBelow(u"Binding result"_s).isNull());
        QTRY_COMPARE_WITH_TIMEOUT(window().tileWord(u"Binding"_s), u"authorized"_s, 20000);

        select(u"OKX"_s);
        QTRY_COMPARE(lastCalls(1), QList<QStringList>({{u"load-credentials"_s, u"okx"_s}}));
        for (const QString &caption : {u"API key"_s, u"API secret"_s, u"Passphrase"_s})
            pasteInto(window().fieldBelow(caption), u"trade-"_s + caption);
        QVERIFY(window().clickButton(u"Validate and save keys"_s));
        QTRY_VERIFY(window().shows(u"Status: valid"_s));
        QCOMPARE(lastCalls(2),
                 QList<QStringList>({{u"validate"_s, u"okx"_s, u"trade-API key"_s, u"trade-API secret"_s,
                                      u"trade-Passphrase"_s},
                                     {u"balance"_s, u"okx"_s}}));
        QVERIFY(window().shows(u"7645.118204 USDT"_s));
        pressAndExpect(u"Load balance"_s, {u"balance"_s, u"okx"_s});
        pressAndExpect(u"Delete"_s, {u"delete-credentials"_s, u"okx"_s});
        QTRY_COMPARE(window().fieldBelow(u"API secret"_s).characterCount(), 0);
        pressAndExpect(u"Check for updates"_s, {u"update-check"_s});
        pressAndExpect(u"Download update"_s, {u"update-download"_s});
        pressAndExpect(u"Install update"_s, {u"update-apply"_s});

        openLog();
        const AccessibleNode newest = window().outputBelow(u"update-apply"_s);
        const QString output = u"update=applied\nprevious_version=1.3.2\ncurrent_version=1.4.0\n"_s;
        QCOMPARE(newest.text(), output);
        const QString part = u"applied\nprevious_version"_s;
        const auto first = static_cast<int>(output.indexOf(part));
        const auto last = static_cast<int>(first + part.size() - 1);
        QVERIFY(!window().bringIntoView(newest).isEmpty());
        const QRect from = newest.characterExtents(first);
        const QRect to = newest.characterExtents(last);
        desktop::drag({from.left() + 1, from.center().y()}, {to.right(), to.center().y()});
        QTRY_COMPARE(newest.selection(), qMakePair(first, last + 1));
        chooseFromMenu(newest, u"Copy"_s);
        QTRY_COMPARE(desktop::clipboard(), part.toUtf8());

        scrollsByWheelAndBar();
        windowManager().clickCloseButton(window().rect());
        QCOMPARE(application().waitForEnd(), 0);
    }
};

static const TestClass<TestMouseJourney> testMouseJourney("tst_mousejourney");

#include "tst_mousejourney.moc"
