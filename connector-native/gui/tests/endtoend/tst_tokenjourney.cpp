#include "support/testprogram.h"
#include "windowtest.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QColor green(51, 209, 89);
constexpr QColor orange(255, 158, 10);
// More than the edges of any letter could come to by chance.
constexpr int manyPixels = 40;

constexpr int pollingPeriod = 3000;

} // namespace

/// From the bind token to the authorized binding and back.
class TestTokenJourney : public WindowTest
{
    Q_OBJECT

private slots:
    void init() override
    {
        renew();
        QVERIFY(application().setFaults("PENDING_CHECKS=1000\n"));
        start();
    }

    void handsTheTokenOverAsItIs_data()
    {
        QTest::addColumn<QString>("token");
        QTest::newRow("blanks around and inside") << u"  to ken  "_s;
        QTest::newRow("blanks only") << u"   "_s;
        QTest::newRow("quotes") << u"a\"b'c`d"_s;
        QTest::newRow("leading dashes") << u"--help -x"_s;
        QTest::newRow("what a shell would expand") << u"$HOME *.cpp \\n ~ %s; false"_s;
        QTest::newRow("other scripts and emoji") << u"ключ-钥匙-🔑-é"_s;
        QTest::newRow("markup") << u"<b>&amp;</b><img src=x>"_s;
    }

    void handsTheTokenOverAsItIs()
    {
        QFETCH(const QString, token);
        QVERIFY(window().paste(window().tokenField(), token));
        QTRY_COMPARE(window().tokenField().text(), token);
        QVERIFY(window().clickButton(u"Claim token"_s));

        QTRY_VERIFY(application().calls().size() > startupCalls);
        QCOMPARE(application().calls().at(startupCalls), QStringList({u"claim-token"_s, token}));
        QCOMPARE(window().tokenField().text(), token);
    }

    void waitsForTheSignatureAndNoLonger()
    {
        QVERIFY(window().fill(window().tokenField(), u"Token-1234 abc"_s));
        QVERIFY(window().clickButton(u"Claim token"_s));
        QTRY_COMPARE(window().tileWord(u"Binding"_s), u"pending signature"_s);
        QTRY_VERIFY(window().shows(u"Connector: ready • Server: reachable • Binding: pending signature"_s));
        QVERIFY(window().pixelsNear(window().label(u"pending signature"_s), orange) > manyPixels);
        QCOMPARE(window().pixelsNear(window().label(u"pending signature"_s), green), 0);

        // Claim and its status, then two whole rounds.
        QTRY_VERIFY_WITH_TIMEOUT(application().calls().size() >= startupCalls + 2 + 8, 3 * pollingPeriod);
        QCOMPARE(application().calls().mid(startupCalls, 10),
                 QList<QStringList>({{u"claim-token"_s, u"Token-1234 abc"_s}, {u"status"_s}}) + refreshCalls
                     + refreshCalls);

        QVERIFY(application().setFaults(""));
        QTRY_COMPARE_WITH_TIMEOUT(window().tileWord(u"Binding"_s), u"authorized"_s, 3 * pollingPeriod);
        QCOMPARE(window().tileWord(u"Connector"_s), u"ready"_s);
        QVERIFY(window().pixelsNear(window().label(u"authorized"_s), green) > manyPixels);
        QCOMPARE(window().pixelsNear(window().label(u"authorized"_s), orange), 0);

        const auto calls = application().calls();
        QTest::qWait(pollingPeriod + pollingPeriod / 3);
        QCOMPARE(application().calls(), calls);
    }

    void showsATokenThatHasToBeConfirmed()
    {
        QVERIFY(window().fill(window().tokenField(), u"waiting-1"_s));
        QVERIFY(window().clickButton(u"Claim token"_s));
        QTRY_COMPARE(window().tileWord(u"Binding"_s), u"token waiting"_s);
    }

    void forgetsARefusedTokenWithTheNextRound()
    {
        QVERIFY(window().fill(window().tokenField(), u"bad-1"_s));
        QVERIFY(window().clickButton(u"Claim token"_s));
        QTRY_VERIFY(window().shows(u"15 command log entries available"_s));
        QCOMPARE(window().tileWord(u"Binding"_s), u"not bound"_s);
        QCOMPARE(window().tokenField().text(), u"bad-1"_s);
        QCOMPARE(application().calls().mid(startupCalls),
                 QList<QStringList>({{u"claim-token"_s, u"bad-1"_s}, {u"status"_s}}) + refreshCalls);
    }

    void doesNothingWithoutAToken()
    {
        QVERIFY(window().clickButton(u"Claim token"_s));
        QVERIFY(window().clickButton(u"Check server"_s));
        QTRY_VERIFY(window().shows(u"10 command log entries available"_s));
        QCOMPARE(application().calls().mid(startupCalls), QList<QStringList>({{u"server-health"_s}}));
    }

    void disconnectsAndEmptiesTheField()
    {
        QVERIFY(window().fill(window().tokenField(), u"abc"_s));
        QVERIFY(window().clickButton(u"Claim token"_s));
        QTRY_COMPARE(window().tileWord(u"Binding"_s), u"pending signature"_s);

        QVERIFY(window().clickButton(u"Disconnect"_s));
        QTRY_COMPARE(window().tileWord(u"Binding"_s), u"not bound"_s);
        QCOMPARE(window().tokenField().text(), QString());
        const auto calls = application().calls();
        QCOMPARE(calls.mid(calls.indexOf({u"disconnect-binding"_s}) + 1), refreshCalls);
    }

    void showsAndHidesTheDetails()
    {
        QVERIFY(window().clickButton(u"Show details"_s));
        QTRY_VERIFY(!window().button(u"Hide details"_s).isNull());
        QVERIFY(!window().shows(u"Raw token, server, and binding output is hidden by default."_s));
        const QString left = window().outputBelow(u"Connector / server"_s).text();
        QVERIFY2(left.startsWith(u"connector_name="_s), qPrintable(left));
        QVERIFY2(left.endsWith(u"\n\n\n{\"reachable\":true,\"latencyMs\":18,\"protocol\":\"v1\"}\n"_s),
                 qPrintable(left));

        QVERIFY(window().clickButton(u"Disconnect"_s));
        const auto right =
            u"{\"status\":\"ok\",\"bindState\":\"session_missing\",\"pairingStatus\":\"unpaired\"}\n"
            "\n\n{\"status\":\"ok\",\"bindState\":\"unpaired\",\"removed\":false}\n"_s;
        QTRY_COMPARE(window().outputBelow(u"Binding result"_s).text(), right);

        QVERIFY(window().clickButton(u"Hide details"_s));
        QTRY_VERIFY(window().shows(u"Raw token, server, and binding output is hidden by default."_s));
        QVERIFY(window().outputBelow(u"Binding result"_s).isNull());
    }

    void saysWhenThereIsNothingToShow()
    {
        QVERIFY(application().installPrinter({}));
        QVERIFY(window().clickButton(u"Refresh all"_s));
        QTRY_VERIFY(window().shows(u"13 command log entries available"_s));
        QVERIFY(window().clickButton(u"Show details"_s));
        QTRY_COMPARE(window().outputBelow(u"Connector / server"_s).text(), u"No data"_s);
        QCOMPARE(window().outputBelow(u"Binding result"_s).text(), u"No data"_s);
    }
};

static const TestClass<TestTokenJourney> testTokenJourney("tst_tokenjourney");

#include "tst_tokenjourney.moc"
