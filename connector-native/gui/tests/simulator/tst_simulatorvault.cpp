#include "exchanges/balancesummary.h"
#include "exchanges/credentialrules.h"
#include "exchanges/exchangecatalogue.h"
#include "simulatorrunner.h"
#include "support/testprogram.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

/// The stand-in's vault: which credentials are taken, kept and given back, and the balances behind them.
class TestSimulatorVault : public QObject
{
    Q_OBJECT

private slots:
    void keyPrefixDecidesTheValidation_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QByteArray>("statusWord");
        QTest::addColumn<bool>("isSaved");
        QTest::newRow("trade- is ready to trade") << u"trade-1"_s << QByteArray("valid_trade_ready") << true;
        QTest::newRow("read- is read only") << u"read-1"_s << QByteArray("valid_read_only") << true;
        QTest::newRow("unsaved- is not kept") << u"unsaved-1"_s << QByteArray("valid_trade_ready") << false;
        QTest::newRow("configured- has no live check")
            << u"configured-1"_s << QByteArray("configured") << false;
        QTest::newRow("error- fails") << u"error-1"_s << QByteArray("error") << false;
        QTest::newRow("any other is invalid") << u"AKIA-1"_s << QByteArray("invalid") << false;
        QTest::newRow("prefix counts only at the start") << u"xtrade-1"_s << QByteArray("invalid") << false;
    }

    void keyPrefixDecidesTheValidation()
    {
        QFETCH(QString, key);
        QFETCH(QByteArray, statusWord);
        QFETCH(bool, isSaved);
        const SimulatorRunner simulator;
        const QByteArray output = simulator.output({u"validate"_s, u"gate"_s, key, u"secret"_s});
        QVERIFY(output.startsWith("exchange=gate\nstatus=" + statusWord + '\n'));
        QVERIFY(output.endsWith(isSaved ? "\ncredentials_saved=true\n" : "\ncredentials_saved=false\n"));
        const QByteArray loaded = simulator.output({u"load-credentials"_s, u"gate"_s});
        QVERIFY(loaded.contains(isSaved ? "status=ok" : "status=missing"));
    }

    void incompleteCredentialsAreInvalid_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("reason");
        const QString key = u"trade-1"_s;
        const QString secret = u"secret"_s;
        QTest::newRow("no key") << QStringList{u"gate"_s, {}, secret} << QByteArray("api_key_missing");
        QTest::newRow("no secret") << QStringList{u"gate"_s, key, {}} << QByteArray("api_secret_missing");
        for (const char *id : {"okx", "kucoin", "bitget"}) {
            const QString exchange = QLatin1StringView(id);
            QTest::addRow("no passphrase for %s", id)
                << QStringList{exchange, key, secret} << QByteArray("passphrase_missing");
            QTest::addRow("empty passphrase for %s", id)
                << QStringList{exchange, key, secret, {}} << QByteArray("passphrase_missing");
        }
        QTest::newRow("line break") << QStringList{u"gate"_s, key, u"a\nb"_s}
                                    << QByteArray("line_break_in_credentials");
    }

    void incompleteCredentialsAreInvalid()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, reason);
        const SimulatorRunner simulator;
        const QByteArray output = simulator.output(QStringList{u"validate"_s} + arguments);
        QVERIFY(output.contains("status=invalid\nreason=" + reason + '\n'));
        QVERIFY(output.contains("credentials_saved=false"));
        QVERIFY(!QFile::exists(simulator.filePath("vault/") + arguments.first()));
    }

    void savedCredentialsLiveUntilDeleted()
    {
        const SimulatorRunner simulator;
        const QByteArray missing = "exchange=okx\nstatus=missing\n";
        QCOMPARE(simulator.output(loadOkx), missing);
        QCOMPARE(simulator.run({u"validate"_s, u"okx"_s, u"trade-=1 "_s, u" sé\"c=r"_s, u"p"_s}).exitCode, 0);
        QCOMPARE(
            simulator.output(loadOkx),
            u"exchange=okx\nstatus=ok\napi_key=trade-=1 \napi_secret= sé\"c=r\npassphrase=p\n"_s.toUtf8());
        QCOMPARE(simulator.output({u"delete-credentials"_s, u"okx"_s}), "exchange=okx\nstatus=ok\n");
        QCOMPARE(simulator.output(loadOkx), missing);
        QCOMPARE(simulator.output({u"delete-credentials"_s, u"okx"_s}), missing);
    }

    void passphraseIsLoadedOnlyWhenStored()
    {
        const SimulatorRunner simulator;
        QCOMPARE(simulator.run({u"validate"_s, u"bybit"_s, u"read-1"_s, u"s"_s}).exitCode, 0);
        QCOMPARE(simulator.output({u"load-credentials"_s, u"bybit"_s}),
                 "exchange=bybit\nstatus=ok\napi_key=read-1\napi_secret=s\n");
    }

    void balanceHasTheExchangesFields_data()
    {
        QTest::addColumn<QString>("exchange");
        QTest::addColumn<QStringList>("patterns");
        const auto quoted = [](const QString &key) { return u"\"%1\":\"[^\"]+\""_s.arg(key); };
        const auto bare = [](const QString &key) { return u"\"%1\":[0-9.]+[,}]"_s.arg(key); };
        const auto row = [](const char *exchange, const QStringList &patterns) {
            QTest::newRow(exchange) << QString(QLatin1StringView(exchange)) << patterns;
        };
        row("bybit", {quoted(u"totalEquity"_s), quoted(u"walletBalance"_s), quoted(u"coin"_s)});
        row("okx", {quoted(u"availBal"_s), quoted(u"cashBal"_s), quoted(u"ccy"_s)});
        row("gate", {quoted(u"total"_s), quoted(u"available"_s), quoted(u"currency"_s)});
        row("bingx", {quoted(u"equity"_s), quoted(u"availableMargin"_s), quoted(u"asset"_s)});
        row("kucoin", {bare(u"availableBalance"_s), bare(u"holdBalance"_s), quoted(u"currency"_s)});
        row("bitget", {quoted(u"available"_s), quoted(u"accountEquity"_s), quoted(u"marginCoin"_s)});
    }

    void balanceHasTheExchangesFields()
    {
        QFETCH(QString, exchange);
        QFETCH(QStringList, patterns);
        const SimulatorRunner simulator;
        QCOMPARE(simulator.run({u"validate"_s, exchange, u"read-1"_s, u"s"_s, u"p"_s}).exitCode, 0);
        const QByteArray balance = simulator.output({u"balance"_s, exchange});
        QVERIFY(QJsonDocument::fromJson(balance).isObject());
        QVERIFY(!balance.contains(R"("status":"error")"));
        for (const QString &pattern : patterns)
            QVERIFY2(QString::fromUtf8(balance).contains(QRegularExpression(pattern)), qPrintable(pattern));
    }

    void everyExchangeOfTheWindowIsSimulatedAndItsBalanceRead_data()
    {
        QTest::addColumn<ExchangeItem>("exchange");
        for (const ExchangeItem &exchange : exchangeCatalogue()) {
            QTest::newRow(qPrintable(exchange.name)) << exchange;
        }
    }

    void everyExchangeOfTheWindowIsSimulatedAndItsBalanceRead()
    {
        QFETCH(const ExchangeItem, exchange);
        const SimulatorRunner simulator;
        ExchangeCredentialDraft draft;
        draft.apiKey = u"read-1"_s;
        draft.apiSecret = u"s"_s;
        draft.passphrase = u"p"_s;
        const QByteArray saved = simulator.output(validateArguments(exchange, draft));
        QVERIFY2(saved.contains("credentials_saved=true"), saved.constData());
        const QString balance = QString::fromUtf8(simulator.output({u"balance"_s, exchange.id}));
        const std::optional<ParsedBalanceView> summary = balanceSummary(exchange.id, balance);
        QVERIFY(summary.has_value());
        // Without a rule for the exchange there is one line that sends the user to the log.
        QVERIFY2(summary->details.size() == 2, qPrintable(summary->headline));

        draft.passphrase.clear();
        const QByteArray withoutPassphrase = SimulatorRunner().output(validateArguments(exchange, draft));
        QCOMPARE(withoutPassphrase.contains("credentials_saved=true"), !exchange.needsPassphrase);
    }

    void balanceNeedsSavedCredentials_data()
    {
        QTest::addColumn<QString>("exchange");
        QTest::newRow("nothing saved") << u"okx"_s;
        QTest::newRow("unknown exchange") << u"../binding"_s;
    }

    void balanceNeedsSavedCredentials()
    {
        QFETCH(QString, exchange);
        QCOMPARE(SimulatorRunner().output({u"balance"_s, exchange}),
                 "{\"status\":\"error\",\"reason\":\"credentials_not_found\"}\n");
    }
};

static const TestClass<TestSimulatorVault> testSimulatorVault("tst_simulatorvault");

#include "tst_simulatorvault.moc"
