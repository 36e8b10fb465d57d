#include "application.h"
#include "mainwindow.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr QColor green(51, 209, 89);
constexpr QColor orange(255, 158, 10);
// More than the edges of any letter could come to by chance.
constexpr int manyPixels = 40;

constexpr int startupCalls = 9;
constexpr int pollingPeriod = 3000;

const QList<QStringList> refreshCalls = {
    {u"status"_s}, {u"server-health"_s}, {u"bind-status"_s}, {u"status"_s}};

} // namespace

/// From the bind token to the authorized binding and back.
class TokenJourneyTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<Application> m_application;
    std::unique_ptr<MainWindow> m_window;

private slots:
    void initTestCase() { QVERIFY(enableAccessibility()); }

    void init()
    {
        m_application = std::make_unique<Application>();
        QVERIFY(m_application->installSimulator());
        QVERIFY(m_application->setFaults("PENDING_CHECKS=1000\n"));
        QVERIFY(m_application->start());
        m_window = std::make_unique<MainWindow>(*m_application);
        QTRY_COMPARE(m_application->calls().size(), startupCalls);
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
        QVERIFY(m_window->paste(m_window->tokenField(), token));
        QTRY_COMPARE(m_window->tokenField().text(), token);
        QVERIFY(m_window->clickButton(u"Claim token"_s));

        QTRY_VERIFY(m_application->calls().size() > startupCalls);
        QCOMPARE(m_application->calls().at(startupCalls), QStringList({u"claim-token"_s, token}));
        QCOMPARE(m_window->tokenField().text(), token);
    }

    void waitsForTheSignatureAndNoLonger()
    {
        QVERIFY(m_window->fill(m_window->tokenField(), u"Token-1234 abc"_s));
        QVERIFY(m_window->clickButton(u"Claim token"_s));
        QTRY_COMPARE(m_window->tileWord(u"Binding"_s), u"pending signature"_s);
        QTRY_VERIFY(m_window->shows(u"Connector: ready • Server: reachable • Binding: pending signature"_s));
        QVERIFY(m_window->pixelsNear(m_window->label(u"pending signature"_s), orange) > manyPixels);
        QCOMPARE(m_window->pixelsNear(m_window->label(u"pending signature"_s), green), 0);

        // Claim and its status, then two whole rounds.
        QTRY_VERIFY_WITH_TIMEOUT(m_application->calls().size() >= startupCalls + 2 + 8, 3 * pollingPeriod);
        QCOMPARE(m_application->calls().mid(startupCalls, 10),
                 QList<QStringList>({{u"claim-token"_s, u"Token-1234 abc"_s}, {u"status"_s}}) + refreshCalls
                     + refreshCalls);

        QVERIFY(m_application->setFaults(""));
        QTRY_COMPARE_WITH_TIMEOUT(m_window->tileWord(u"Binding"_s), u"authorized"_s, 3 * pollingPeriod);
        QCOMPARE(m_window->tileWord(u"Connector"_s), u"ready"_s);
        QVERIFY(m_window->pixelsNear(m_window->label(u"authorized"_s), green) > manyPixels);
        QCOMPARE(m_window->pixelsNear(m_window->label(u"authorized"_s), orange), 0);

        const auto calls = m_application->calls();
        QTest::qWait(pollingPeriod + pollingPeriod / 3);
        QCOMPARE(m_application->calls(), calls);
    }

    void showsATokenThatHasToBeConfirmed()
    {
        QVERIFY(m_window->fill(m_window->tokenField(), u"waiting-1"_s));
        QVERIFY(m_window->clickButton(u"Claim token"_s));
        QTRY_COMPARE(m_window->tileWord(u"Binding"_s), u"token waiting"_s);
    }

    void forgetsARefusedTokenWithTheNextRound()
    {
        QVERIFY(m_window->fill(m_window->tokenField(), u"bad-1"_s));
        QVERIFY(m_window->clickButton(u"Claim token"_s));
        QTRY_VERIFY(m_window->shows(u"15 command log entries available"_s));
        QCOMPARE(m_window->tileWord(u"Binding"_s), u"not bound"_s);
        QCOMPARE(m_window->tokenField().text(), u"bad-1"_s);
        QCOMPARE(m_application->calls().mid(startupCalls),
                 QList<QStringList>({{u"claim-token"_s, u"bad-1"_s}, {u"status"_s}}) + refreshCalls);
    }

    void doesNothingWithoutAToken()
    {
        QVERIFY(m_window->clickButton(u"Claim token"_s));
        QVERIFY(m_window->clickButton(u"Check server"_s));
        QTRY_VERIFY(m_window->shows(u"10 command log entries available"_s));
        QCOMPARE(m_application->calls().mid(startupCalls), QList<QStringList>({{u"server-health"_s}}));
    }

    void disconnectsAndEmptiesTheField()
    {
        QVERIFY(m_window->fill(m_window->tokenField(), u"abc"_s));
        QVERIFY(m_window->clickButton(u"Claim token"_s));
        QTRY_COMPARE(m_window->tileWord(u"Binding"_s), u"pending signature"_s);

        QVERIFY(m_window->clickButton(u"Disconnect"_s));
        QTRY_COMPARE(m_window->tileWord(u"Binding"_s), u"not bound"_s);
        QCOMPARE(m_window->tokenField().text(), QString());
        const auto calls = m_application->calls();
        QCOMPARE(calls.mid(calls.indexOf({u"disconnect-binding"_s}) + 1), refreshCalls);
    }

    void showsAndHidesTheDetails()
    {
        QVERIFY(m_window->clickButton(u"Show details"_s));
        QTRY_VERIFY(!m_window->button(u"Hide details"_s).isNull());
        QVERIFY(!m_window->shows(u"Raw token, server, and binding output is hidden by default."_s));
        const QString left = m_window->outputBelow(u"Connector / server"_s).text();
        QVERIFY2(left.startsWith(u"connector_name="_s), qPrintable(left));
        QVERIFY2(left.endsWith(u"\n\n\n{\"reachable\":true,\"latencyMs\":18,\"protocol\":\"v1\"}\n"_s),
                 qPrintable(left));

        QVERIFY(m_window->clickButton(u"Disconnect"_s));
        const auto right =
            u"{\"status\":\"ok\",\"bindState\":\"session_missing\",\"pairingStatus\":\"unpaired\"}\n"
            "\n\n{\"status\":\"ok\",\"bindState\":\"unpaired\",\"removed\":false}\n"_s;
        QTRY_COMPARE(m_window->outputBelow(u"Binding result"_s).text(), right);

        QVERIFY(m_window->clickButton(u"Hide details"_s));
        QTRY_VERIFY(m_window->shows(u"Raw token, server, and binding output is hidden by default."_s));
        QVERIFY(m_window->outputBelow(u"Binding result"_s).isNull());
    }

    void saysWhenThereIsNothingToShow()
    {
        QVERIFY(m_application->installPrinter({}));
        QVERIFY(m_window->clickButton(u"Refresh all"_s));
        QTRY_VERIFY(m_window->shows(u"13 command log entries available"_s));
        QVERIFY(m_window->clickButton(u"Show details"_s));
        QTRY_COMPARE(m_window->outputBelow(u"Connector / server"_s).text(), u"No data"_s);
        QCOMPARE(m_window->outputBelow(u"Binding result"_s).text(), u"No data"_s);
    }

    void cleanup()
    {
        QCOMPARE(m_application->printed(), QByteArray());
        m_window.reset();
        m_application.reset();
    }
};

QTEST_GUILESS_MAIN(TokenJourneyTest)
#include "tst_tokenjourney.moc"
