#include "support/testprogram.h"
#include "windowtest.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QColor green(23, 122, 51);

} // namespace

/// The credentials of each exchange from typing them to deleting them.
class TestExchangeJourney : public WindowTest
{
    Q_OBJECT

    void typeKeys(const QString &key, const QString &secret, const QString &passphrase) const
    {
        typeInto(u"API key"_s, key);
        typeInto(u"API secret"_s, secret);
        if (!passphrase.isEmpty())
            typeInto(u"Passphrase"_s, passphrase);
    }

    /// What stands in the balance panel below its title.
    [[nodiscard]] QStringList shownBalance() const
    {
        const QStringList texts = window().texts();
        return texts.mid(texts.indexOf(u"Balance"_s) + 1, 3);
    }

private slots:
    void goesFromTypedKeysToABalanceAndBack_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<bool>("needsPassphrase");
        QTest::addColumn<QStringList>("balance");
        QTest::newRow("Bybit") << u"bybit"_s << false
                               << QStringList{u"15324.87214410 USDT"_s, u"Total equity"_s,
                                              u"Wallet balance: 15210.33101992 USDT"_s};
        QTest::newRow("OKX") << u"okx"_s << true
                             << QStringList{u"7645.118204 USDT"_s, u"Available balance"_s,
                                            u"Cash balance: 8120.441700 USDT"_s};
        QTest::newRow("Gate") << u"gate"_s << false
                              << QStringList{u"2260.365500 USDT"_s, u"Available"_s,
                                             u"Total: 2480.615500 USDT"_s};
        QTest::newRow("BingX") << u"bingx"_s << false
                               << QStringList{u"815.7420 USDT"_s, u"Available margin"_s,
                                              u"Equity: 951.0371 USDT"_s};
        QTest::newRow("KuCoin") << u"kucoin"_s << true
                                << QStringList{u"1250.75 USDT"_s, u"Available balance"_s,
                                               u"Held: 83.0 USDT"_s};
        QTest::newRow("Bitget") << u"bitget"_s << true
                                << QStringList{u"3071.90460000 USDT"_s, u"Available futures balance"_s,
                                               u"Account equity: 3140.22810000 USDT"_s};
    }

    void goesFromTypedKeysToABalanceAndBack()
    {
        QFETCH(const QString, id);
        QFETCH(const bool, needsPassphrase);
        QFETCH(const QStringList, balance);
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        select(name);
        QCOMPARE(application().calls().constLast().value(0),
                 id == u"bybit"_s ? u"status"_s : u"load-credentials"_s);
        QCOMPARE(!window().fieldBelow(u"Passphrase"_s).isNull(), needsPassphrase);

        typeKeys(u"trade-Key 1"_s, u"s3cr\"et"_s, needsPassphrase ? u"pass $x"_s : QString());
        QVERIFY(window().clickButton(u"Validate and save keys"_s));
        QTRY_VERIFY(window().shows(u"Status: valid"_s));
        QStringList validation = {u"validate"_s, id, u"trade-Key 1"_s, u"s3cr\"et"_s};
        if (needsPassphrase)
            validation.append(u"pass $x"_s);
        QCOMPARE(lastCalls(2), QList<QStringList>({validation, {u"balance"_s, id}}));
        QVERIFY(!window().button(u"Update and save keys"_s).isNull());
        QVERIFY(window().button(u"Validate and save keys"_s).isNull());
        QCOMPARE(shownBalance(), balance);
        QVERIFY(!window().shows(u"Balance not loaded yet"_s));
        QVERIFY(window().pixelsNear(window().label(u"Status: valid"_s), green) > 10);

        QVERIFY(window().clickButton(u"Load balance"_s));
        QTRY_COMPARE(lastCalls(2), QList<QStringList>({{u"balance"_s, id}, {u"balance"_s, id}}));
        QTRY_COMPARE(shownBalance(), balance);

        QVERIFY(window().clickButton(u"Delete"_s));
        QTRY_VERIFY(window().shows(u"Status: not configured"_s));
        QCOMPARE(lastCalls(1), QList<QStringList>({{u"delete-credentials"_s, id}}));
        QCOMPARE(window().fieldBelow(u"API key"_s).text(), QString());
        QCOMPARE(window().fieldBelow(u"API secret"_s).text(), QString());
        QVERIFY(window().shows(u"Balance not loaded yet"_s));
        QVERIFY(!window().button(u"Validate and save keys"_s).isNull());
        QCOMPARE(application().stateFile(u"vault/"_s + id), QByteArray());
    }

    void judgesByTheAnswer_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("status");
        QTest::addColumn<bool>("isSaved");
        QTest::addColumn<QString>("headline");
        const auto none = u"Balance not loaded yet"_s;
        const auto failed = u"Could not load balance"_s;
        QTest::newRow("read only") << u"read-1"_s << u"valid"_s << true << u"15324.87214410 USDT"_s;
        QTest::newRow("valid but not saved") << u"unsaved-1"_s << u"valid"_s << false << failed;
        QTest::newRow("no live check")
            << u"configured-1"_s << u"adapter exists, live validation pending"_s << false << none;
        QTest::newRow("error") << u"error-1"_s << u"error"_s << false << none;
        QTest::newRow("refused") << u"anything"_s << u"invalid"_s << false << none;
        QTest::newRow("empty") << QString() << u"invalid"_s << false << none;
    }

    void judgesByTheAnswer()
    {
        QFETCH(const QString, key);
        QFETCH(const QString, status);
        QFETCH(const bool, isSaved);
        QFETCH(const QString, headline);
        typeKeys(key, u"secret"_s, {});
        QVERIFY(window().clickButton(u"Validate and save keys"_s));
        QTRY_VERIFY(window().shows(u"Status: "_s + status));
        QVERIFY(application().calls().contains({u"validate"_s, u"bybit"_s, key, u"secret"_s}));
        QVERIFY(window().shows(headline));
        QCOMPARE(!window().button(u"Update and save keys"_s).isNull(), isSaved);
        QCOMPARE(window().fieldBelow(u"API key"_s).text(), key);
    }

    void reportsABalanceWithoutSavedKeys()
    {
        QVERIFY(window().clickButton(u"Load balance"_s));
        QTRY_VERIFY(window().shows(u"Could not load balance"_s));
        QVERIFY(window().shows(u"credentials not found"_s));
        QVERIFY(window().shows(u"Status: not checked"_s));
    }

    void bringsSavedKeysBackWithTheirTab()
    {
        select(u"KuCoin"_s);
        typeKeys(u"trade-k"_s, u"sss"_s, u"pppp"_s);
        QVERIFY(window().clickButton(u"Validate and save keys"_s));
        QTRY_VERIFY(window().shows(u"Status: valid"_s));

        select(u"Gate"_s);
        QTRY_VERIFY(window().shows(u"Status: not checked"_s));
        QVERIFY(window().shows(u"Balance not loaded yet"_s));
        QCOMPARE(window().fieldBelow(u"API key"_s).text(), QString());
        QCOMPARE(window().fieldBelow(u"API secret"_s).text(), QString());

        select(u"KuCoin"_s);
        QTRY_VERIFY(window().shows(u"Status: valid"_s));
        QCOMPARE(window().fieldBelow(u"API key"_s).text(), u"trade-k"_s);
        QCOMPARE(window().fieldBelow(u"API secret"_s).characterCount(), 3);
        QCOMPARE(window().fieldBelow(u"Passphrase"_s).characterCount(), 4);
        QVERIFY(!window().button(u"Update and save keys"_s).isNull());
    }

    void keepsWhatWasTypedUntilALoadReplacesIt()
    {
        typeKeys(u"trade-old"_s, u"sss"_s, {});
        QVERIFY(window().clickButton(u"Validate and save keys"_s));
        QTRY_VERIFY(window().shows(u"Status: valid"_s));
        typeKeys(u"trade-new"_s, u"longer"_s, {});
        QVERIFY(window().shows(u"Status: valid"_s));

        QVERIFY(application().setFaults("ONLY=load-credentials\nSILENT=1\n"));
        select(u"OKX"_s);
        QCOMPARE(window().fieldBelow(u"API key"_s).text(), QString());
        select(u"Bybit"_s);
        QTRY_COMPARE(window().fieldBelow(u"API key"_s).text(), u"trade-new"_s);
        QCOMPARE(window().fieldBelow(u"API secret"_s).characterCount(), 6);

        QVERIFY(application().setFaults(""));
        select(u"OKX"_s);
        select(u"Bybit"_s);
        QTRY_COMPARE(window().fieldBelow(u"API key"_s).text(), u"trade-old"_s);
    }

    void forgetsUnsavedKeysWithTheirTab()
    {
        select(u"OKX"_s);
        typeKeys(u"typed"_s, u"only"_s, u"here"_s);
        select(u"Gate"_s);
        select(u"OKX"_s);
        QTRY_COMPARE(window().fieldBelow(u"API key"_s).text(), QString());
        QCOMPARE(window().fieldBelow(u"API secret"_s).characterCount(), 0);
        QCOMPARE(window().fieldBelow(u"Passphrase"_s).characterCount(), 0);
    }

    void givesSecretsAwayNowhere()
    {
        select(u"OKX"_s);
        typeKeys(u"public"_s, u"hemlig"_s, u"tystnad"_s);
        QCOMPARE(window().fieldBelow(u"API key"_s).name(), u"API key"_s);
        QCOMPARE(window().fieldBelow(u"API secret"_s).name(), u"API secret"_s);
        QCOMPARE(window().fieldBelow(u"API secret"_s).text(), QString(6, u'•'));
        QCOMPARE(window().fieldBelow(u"Passphrase"_s).name(), u"Passphrase"_s);
        QCOMPARE(window().fieldBelow(u"Passphrase"_s).text(), QString(7, u'•'));
    }
};

static const TestClass<TestExchangeJourney> testExchangeJourney("tst_exchangejourney");

#include "tst_exchangejourney.moc"
