#include "exchangetesting.h"
#include "support/testprogram.h"

namespace {

using Operation = void (ConnectorViewModel::*)();

} // namespace

class TestExchangeCommands : public QObject
{
    Q_OBJECT

private slots:
    void operationsNameTheSelectedExchange_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("exchangeId");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("arguments");

        const Operation balance = &ConnectorViewModel::loadBalance;
        struct Named
        {
            QString id;
            QString name;
        };
        const Named exchanges[] = {
            {u"bybit"_s, u"Bybit"_s}, {u"okx"_s, u"OKX"_s},       {u"gate"_s, u"Gate"_s},
            {u"bingx"_s, u"BingX"_s}, {u"kucoin"_s, u"KuCoin"_s}, {u"bitget"_s, u"Bitget"_s},
        };
        for (const Named &exchange : exchanges) {
            const auto row = [&](const QString &command, Operation operation, const QStringList &keys) {
                QTest::addRow("%s %s", qPrintable(command), qPrintable(exchange.id))
                    << operation << exchange.id << command + u' ' + exchange.name
                    << QStringList{command, exchange.id} + keys;
            };
            row(u"load-credentials"_s, &ConnectorViewModel::loadSelectedExchangeCredentials, {});
            row(u"validate"_s, &ConnectorViewModel::validateSelectedExchange, {u""_s, u""_s});
            row(u"delete-credentials"_s, &ConnectorViewModel::deleteSelectedExchangeCredentials, {});
            row(u"balance"_s, balance, {});
        }
    }

    void operationsNameTheSelectedExchange()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, exchangeId);
        QFETCH(QString, title);
        QFETCH(QStringList, arguments);
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setSelectedExchangeId(exchangeId);
        (viewModel.*operation)();
        QCOMPARE(titlesOldestFirst(viewModel), QStringList(title));
        QCOMPARE(connector.callArguments(), QList({arguments}));
    }

    void answerLandsWhereItWasAskedFor_data()
    {
        QTest::addColumn<Operation>("operation");
        const Operation balance = &ConnectorViewModel::loadBalance;
        QTest::newRow("load") << &ConnectorViewModel::loadSelectedExchangeCredentials;
        QTest::newRow("validate") << &ConnectorViewModel::validateSelectedExchange;
        QTest::newRow("delete") << &ConnectorViewModel::deleteSelectedExchangeCredentials;
        QTest::newRow("balance") << balance;
    }

    // The selection changes between the run and its completion.
    void answerLandsWhereItWasAskedFor()
    {
        QFETCH(Operation, operation);
        const FakeConnector connector;
        connector.answer(u"load-credentials"_s, u"status=ok"_s);
        connector.answer(u"validate"_s, u"status=valid_read_only"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setSelectedExchangeId(u"okx"_s);
        connect(&viewModel, &ConnectorViewModel::logsChanged, this,
                [&] { viewModel.setSelectedExchangeId(u"gate"_s); });
        (viewModel.*operation)();
        QVERIFY(onlyChanged(viewModel, u"okx"_s));
        for (const QStringList &call : connector.callArguments()) {
            QCOMPARE(call.at(1), u"okx"_s);
        }
        for (const QString &title : titlesOldestFirst(viewModel)) {
            QVERIFY2(title.endsWith(u" OKX"_s), qPrintable(title));
        }
    }

    void answerMeetsTheRecordAsItIsByThen_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<ExchangeCredentialDraft>("expected");

        ExchangeCredentialDraft edited = typedDraft();
        edited.apiKey = u"edited key"_s;

        ExchangeCredentialDraft loaded = edited;
        loaded.apiSecret = u"vault secret"_s;
        loaded.loadedFromVault = true;
        QTest::newRow("load") << Operation(&ConnectorViewModel::loadSelectedExchangeCredentials) << loaded;

        ExchangeCredentialDraft validated = edited;
        validated.status = u"invalid"_s;
        validated.validationOutput = u"status=invalid"_s;
        QTest::newRow("validate") << Operation(&ConnectorViewModel::validateSelectedExchange) << validated;

        ExchangeCredentialDraft withBalance = edited;
        withBalance.balance = u"1 USDT"_s;
        const Operation balance = &ConnectorViewModel::loadBalance;
        QTest::newRow("balance") << balance << withBalance;
    }

    // While the connector runs, the record is edited; then another exchange is selected, in which other
    // values have been typed. Neither may get into the other's record, nor may what the record held when the
    // command began.
    void answerMeetsTheRecordAsItIsByThen()
    {
        QFETCH(Operation, operation);
        const FakeConnector connector;
        connector.answer(u"load-credentials"_s, u"status=ok\napi_secret=vault secret"_s);
        connector.answer(u"validate"_s, u"status=invalid"_s);
        connector.answer(u"balance"_s, u"1 USDT"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        ExchangeCredentialDraft gate;
        gate.apiKey = u"gate's key"_s;
        gate.apiSecret = u"gate's secret"_s;
        gate.passphrase = u"gate's phrase"_s;
        type(viewModel, u"gate"_s, gate);
        type(viewModel, u"okx"_s);
        connect(&viewModel, &ConnectorViewModel::aboutToBlock, this,
                [&] { viewModel.setSelectedApiKey(u"edited key"_s); });
        connect(&viewModel, &ConnectorViewModel::logsChanged, this,
                [&] { viewModel.setSelectedExchangeId(u"gate"_s); });
        (viewModel.*operation)();
        QTEST(viewModel.exchangeDrafts().value(u"okx"_s), "expected");
        QCOMPARE(viewModel.exchangeDrafts().value(u"gate"_s), gate);
    }

    void unknownSelectionFallsBackToBybit()
    {
        const FakeConnector connector;
        connector.answer(u"load-credentials"_s, u"status=ok\napi_key=AK"_s);
        connector.answer(u"validate"_s, u"status=invalid"_s);
        connector.answer(u"balance"_s, u"1 USDT"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        type(viewModel, u"nowhere"_s);
        viewModel.loadSelectedExchangeCredentials();
        viewModel.validateSelectedExchange();
        viewModel.loadBalance();
        QCOMPARE(connector.callArguments(),
                 QList({QStringList{u"load-credentials"_s, u"bybit"_s},
                        QStringList{u"validate"_s, u"bybit"_s, u"typed key"_s, u"typed secret"_s},
                        QStringList{u"balance"_s, u"bybit"_s}}));
        QCOMPARE(titlesOldestFirst(viewModel),
                 QStringList({u"load-credentials Bybit"_s, u"validate Bybit"_s, u"balance Bybit"_s}));
        const ExchangeCredentialDraft bybit = viewModel.exchangeDrafts().value(u"bybit"_s);
        QCOMPARE(bybit.apiKey, u"AK"_s);
        QCOMPARE(bybit.status, u"invalid"_s);
        QCOMPARE(bybit.balance, u"1 USDT"_s);
        QCOMPARE(viewModel.selectedDraft(), typedDraft());
        viewModel.deleteSelectedExchangeCredentials();
        QCOMPARE(connector.callArguments().last(), QStringList({u"delete-credentials"_s, u"bybit"_s}));
        QCOMPARE(viewModel.exchangeDrafts().value(u"bybit"_s).status, u"not configured"_s);
        QCOMPARE(viewModel.selectedDraft(), typedDraft());
    }

    void failedLaunches()
    {
        const QTemporaryDir home;
        const QString failure = missingConnectorText(home.path());
        ConnectorViewModel viewModel(placeWithoutConnector(home.path()), endlessPause);
        type(viewModel, u"okx"_s);
        viewModel.validateSelectedExchange();
        QCOMPARE(viewModel.selectedDraft().status, u"unknown"_s);
        QCOMPARE(viewModel.selectedDraft().validationOutput, failure);
        viewModel.loadBalance();
        QCOMPARE(viewModel.selectedDraft().balance, failure);
        viewModel.loadSelectedExchangeCredentials();
        QCOMPARE(viewModel.selectedDraft(), ExchangeCredentialDraft());
        viewModel.deleteSelectedExchangeCredentials();
        QCOMPARE(viewModel.selectedDraft().validationOutput, u"credentials deleted"_s);
        QCOMPARE(viewModel.logs()->count(), 4);
    }
};

static const TestClass<TestExchangeCommands> testExchangeCommands("tst_exchangecommands");

#include "tst_exchangecommands.moc"
