#include "exchangetesting.h"
#include "support/testprogram.h"

class TestCredentialCommands : public QObject
{
    Q_OBJECT

private slots:
    void validationPassesTheTypedKeys_data()
    {
        QTest::addColumn<QString>("exchangeId");
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<QStringList>("passed");

        const QStringList keys{u"K"_s, u"S"_s};
        const QStringList withPhrase = keys + QStringList{u"P"_s};
        const QStringList emptyPhrase = keys + QStringList{u""_s};
        QTest::newRow("bybit never passes a passphrase") << u"bybit"_s << withPhrase << keys;
        QTest::newRow("gate never passes a passphrase") << u"gate"_s << withPhrase << keys;
        QTest::newRow("bingx never passes a passphrase") << u"bingx"_s << withPhrase << keys;
        QTest::newRow("okx passes a passphrase") << u"okx"_s << withPhrase << withPhrase;
        QTest::newRow("kucoin passes a passphrase") << u"kucoin"_s << withPhrase << withPhrase;
        QTest::newRow("bitget passes a passphrase") << u"bitget"_s << withPhrase << withPhrase;
        QTest::newRow("kucoin without a passphrase") << u"kucoin"_s << emptyPhrase << keys;
        QTest::newRow("a passphrase of blanks")
            << u"okx"_s << QStringList{u"K"_s, u"S"_s, u"  "_s} << QStringList{u"K"_s, u"S"_s, u"  "_s};
        QTest::newRow("empty fields before a passphrase")
            << u"okx"_s << QStringList{u""_s, u""_s, u"P"_s} << QStringList{u""_s, u""_s, u"P"_s};
        const QStringList odd{u" 'K\" "_s, u"--help"_s, u"$(id)ü😀\n"_s};
        QTest::newRow("exactly as typed") << u"bitget"_s << odd << odd;
    }

    void validationPassesTheTypedKeys()
    {
        QFETCH(QString, exchangeId);
        QFETCH(QStringList, typed);
        QFETCH(QStringList, passed);
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        ExchangeCredentialDraft draft;
        draft.apiKey = typed.at(0);
        draft.apiSecret = typed.at(1);
        draft.passphrase = typed.at(2);
        type(viewModel, exchangeId, draft);
        viewModel.validateSelectedExchange();
        QCOMPARE(connector.callArguments(), QList({QStringList{u"validate"_s, exchangeId} + passed}));
    }

    void loadFoldsTheAnswer_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("loadedBefore");
        QTest::addColumn<ExchangeCredentialDraft>("expected");

        ExchangeCredentialDraft vault = typedDraft();
        vault.loadedFromVault = true;
        ExchangeCredentialDraft keyOnly = vault;
        keyOnly.apiKey = u"AK"_s;
        ExchangeCredentialDraft all = keyOnly;
        all.apiSecret = u"  AS "_s;
        all.passphrase = u""_s;
        QTest::newRow("the key alone") << u"status=ok\napi_key=AK"_s << false << keyOnly;
        QTest::newRow("all three values")
            << u"status=ok\napi_key=AK\napi_secret=  AS \npassphrase=\napi_key=other\n"_s << false << all;
        QTest::newRow("a reload of the vault's values") << u"status=ok\napi_key=AK"_s << true << keyOnly;
        QTest::newRow("no value at all") << u"status=ok"_s << false << vault;
        QTest::newRow("missing forgets what was only typed")
            << u"status=missing"_s << false << ExchangeCredentialDraft();
        QTest::newRow("nothing printed forgets what was only typed")
            << QString() << false << ExchangeCredentialDraft();
        QTest::newRow("missing keeps the vault's values") << u"status=missing\napi_key=X"_s << true << vault;
        QTest::newRow("nothing printed keeps the vault's values") << QString() << true << vault;
    }

    void loadFoldsTheAnswer()
    {
        QFETCH(QString, answer);
        QFETCH(bool, loadedBefore);
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        type(viewModel, u"gate"_s);
        if (loadedBefore) {
            connector.answer(u"load-credentials"_s, u"status=ok"_s);
            viewModel.loadSelectedExchangeCredentials();
        }
        connector.answer(u"load-credentials"_s, answer);
        viewModel.loadSelectedExchangeCredentials();
        QTEST(viewModel.exchangeDrafts().value(u"gate"_s), "expected");
    }

    void validationFoldsTheAnswer_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("status");
        QTest::addColumn<bool>("vaultFlag");
        QTest::addColumn<bool>("asksForTheBalance");

        const QString livePending = u"adapter exists, live validation pending"_s;
        QTest::newRow("trade ready and saved")
            << u"status=valid_trade_ready\ncredentials_saved=true\n"_s << u"valid"_s << true << true;
        QTest::newRow("read only and saved")
            << u"status=valid_read_only\ncredentials_saved=true\n"_s << u"valid"_s << true << true;
        QTest::newRow("trade ready, not saved")
            << u"status=valid_trade_ready"_s << u"valid"_s << false << true;
        QTest::newRow("read only, not saved")
            << u"status=valid_read_only\ncredentials_saved=false"_s << u"valid"_s << false << true;
        QTest::newRow("valid wins over the others")
            << u"status=error status=invalid status=configured status=valid_read_only"_s << u"valid"_s
            << false << true;
        QTest::newRow("configured") << u"status=configured"_s << livePending << false << false;
        QTest::newRow("configured wins over invalid")
            << u"status=invalid status=configured"_s << livePending << false << false;
        QTest::newRow("invalid") << u"status=invalid"_s << u"invalid"_s << false << false;
        QTest::newRow("invalid wins over error")
            << u"status=error\nstatus=invalid"_s << u"invalid"_s << false << false;
        QTest::newRow("error, saved or not")
            << u"status=error\ncredentials_saved=true"_s << u"error"_s << false << false;
        QTest::newRow("no marker") << u"status=valid"_s << u"unknown"_s << false << false;
        QTest::newRow("nothing printed") << QString() << u"unknown"_s << false << false;
    }

    void validationFoldsTheAnswer()
    {
        QFETCH(QString, answer);
        QFETCH(bool, vaultFlag);
        QFETCH(bool, asksForTheBalance);
        const FakeConnector connector;
        connector.answer(u"validate"_s, answer);
        connector.answer(u"balance"_s, u"1 USDT"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        type(viewModel, u"okx"_s);
        viewModel.validateSelectedExchange();
        const QStringList balanceRun = asksForTheBalance ? QStringList{u"balance OKX"_s} : QStringList();
        const ExchangeCredentialDraft draft = viewModel.exchangeDrafts().value(u"okx"_s);
        QCOMPARE(titlesOldestFirst(viewModel), QStringList{u"validate OKX"_s} + balanceRun);
        QTEST(draft.status, "status");
        QCOMPARE(draft.loadedFromVault, vaultFlag);
        QCOMPARE(draft.validationOutput, answer);
        QCOMPARE(draft.balance, asksForTheBalance ? u"1 USDT"_s : u"not loaded"_s);
        QCOMPARE(draft.apiKey, u"typed key"_s);
        QCOMPARE(draft.apiSecret, u"typed secret"_s);
        QCOMPARE(draft.passphrase, u"typed phrase"_s);
        QVERIFY(onlyChanged(viewModel, u"okx"_s));
    }

    void validKeysLoadTheBalanceAfterTheyAreStored()
    {
        const FakeConnector connector;
        connector.answer(u"validate"_s, u"status=valid_read_only\ncredentials_saved=true"_s);
        connector.answer(u"balance"_s, u"status=error \"status\":\"error\""_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setSelectedExchangeId(u"okx"_s);
        QStringList statusAtEachEntry;
        connect(&viewModel, &ConnectorViewModel::logsChanged, this,
                [&] { statusAtEachEntry += viewModel.selectedDraft().status; });
        viewModel.validateSelectedExchange();
        QCOMPARE(statusAtEachEntry, QStringList({u"not checked"_s, u"valid"_s}));
        QCOMPARE(connector.callArguments().at(1), QStringList({u"balance"_s, u"okx"_s}));
        QCOMPARE(viewModel.selectedDraft().status, u"valid"_s);
        QCOMPARE(viewModel.selectedDraft().balance, u"status=error \"status\":\"error\""_s);
        QVERIFY(viewModel.selectedDraft().loadedFromVault);
    }

    void validationWithoutTheSavedMarkerClearsTheVaultFlag()
    {
        const FakeConnector connector;
        connector.answer(u"load-credentials"_s, u"status=ok"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.loadSelectedExchangeCredentials();
        for (const QString &answer :
             {u"status=configured"_s, u"status=invalid"_s, u"status=error"_s, u""_s}) {
            connector.answer(u"validate"_s, answer);
            viewModel.validateSelectedExchange();
            QVERIFY2(viewModel.selectedDraft().loadedFromVault, qPrintable(answer));
        }
        connector.answer(u"validate"_s, u"status=valid_trade_ready"_s);
        viewModel.validateSelectedExchange();
        QVERIFY(!viewModel.selectedDraft().loadedFromVault);
    }

    void deletionResetsWhateverTheAnswer()
    {
        const FakeConnector connector;
        connector.answer(u"validate"_s, u"status=valid_read_only\ncredentials_saved=true"_s);
        connector.answer(u"delete-credentials"_s, u"status=error\nstatus=ok"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        type(viewModel, u"bitget"_s);
        viewModel.validateSelectedExchange();
        viewModel.deleteSelectedExchangeCredentials();
        ExchangeCredentialDraft expected;
        expected.status = u"not configured"_s;
        expected.validationOutput = u"credentials deleted"_s;
        QCOMPARE(viewModel.selectedDraft(), expected);
        QCOMPARE(viewModel.logs()->at(0).output, u"status=error\nstatus=ok"_s);
        QVERIFY(onlyChanged(viewModel, u"bitget"_s));
    }

    void reloadAfterDeletionOfUnsavedKeysForgetsIt()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.deleteSelectedExchangeCredentials();
        viewModel.loadSelectedExchangeCredentials();
        QCOMPARE(viewModel.selectedDraft(), ExchangeCredentialDraft());
    }

    void nulInAKeyIsALaunchFailure()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setSelectedApiKey(u"a\0b"_s);
        viewModel.validateSelectedExchange();
        QCOMPARE(viewModel.selectedDraft().validationOutput,
                 failureText(u"the path or an argument contains a NUL character"_s, connector.program()));
        QCOMPARE(viewModel.selectedDraft().status, u"unknown"_s);
        QCOMPARE(viewModel.selectedApiKey(), u"a\0b"_s);
        QCOMPARE(connector.callArguments(), QList<QStringList>());
    }
};

static const TestClass<TestCredentialCommands> testCredentialCommands("tst_credentialcommands");

#include "tst_credentialcommands.moc"
