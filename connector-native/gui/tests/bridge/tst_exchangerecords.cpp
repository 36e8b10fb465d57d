#include "exchangetesting.h"
#include "support/testprogram.h"

class TestExchangeRecords : public QObject
{
    Q_OBJECT

private slots:
    void typingAfterAValidationKeepsItsResult()
    {
        const FakeConnector connector;
        connector.answer(u"validate"_s, u"status=valid_read_only\ncredentials_saved=true"_s);
        connector.answer(u"balance"_s, u"1 USDT"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.validateSelectedExchange();
        ExchangeCredentialDraft expected = viewModel.selectedDraft();
        expected.apiKey = u"other"_s;
        viewModel.setSelectedApiKey(u"other"_s);
        QCOMPARE(viewModel.selectedDraft(), expected);
        QCOMPARE(viewModel.selectedDraft().status, u"valid"_s);
    }

    void keyFieldsWriteTheSelectedRecord_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QString ExchangeCredentialDraft::*>("field");

        QTest::newRow("API key") << "selectedApiKey"_ba << &ExchangeCredentialDraft::apiKey;
        QTest::newRow("API secret") << "selectedApiSecret"_ba << &ExchangeCredentialDraft::apiSecret;
        QTest::newRow("passphrase") << "selectedPassphrase"_ba << &ExchangeCredentialDraft::passphrase;
    }

    void keyFieldsWriteTheSelectedRecord()
    {
        QFETCH(QByteArray, property);
        QFETCH(QString ExchangeCredentialDraft::*, field);
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setSelectedExchangeId(u"kucoin"_s);
        QVERIFY(viewModel.setProperty(property.constData(), u" typed \n"_s));
        ExchangeCredentialDraft expected;
        expected.*field = u" typed \n"_s;
        QCOMPARE(viewModel.exchangeDrafts().value(u"kucoin"_s), expected);
        QCOMPARE(viewModel.property(property.constData()).toString(), u" typed \n"_s);
        QVERIFY(onlyChanged(viewModel, u"kucoin"_s));
        viewModel.setSelectedExchangeId(u"gate"_s);
        QCOMPARE(viewModel.property(property.constData()).toString(), QString());
        QCOMPARE(connector.callArguments(), QList<QStringList>());
    }

    void selectionShowsAnUntouchedRecord()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setSelectedExchangeId(u"okx"_s);
        QCOMPARE(viewModel.selectedDraft().apiKey, QString());
        QCOMPARE(viewModel.selectedDraft().status, u"not checked"_s);
        QCOMPARE(viewModel.selectedDraft().balance, u"not loaded"_s);
        QVERIFY(!viewModel.selectedDraft().loadedFromVault);
    }

    void selectedEntryIsTheFirstWithTheId_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("name");
        QTest::newRow("in the catalogue") << u"kucoin"_s << u"KuCoin"_s;
        QTest::newRow("not in the catalogue") << u"nowhere"_s << u"Bybit"_s;
        QTest::newRow("in another case") << u"OKX"_s << u"Bybit"_s;
        QTest::newRow("empty") << QString() << u"Bybit"_s;
    }

    void selectedEntryIsTheFirstWithTheId()
    {
        QFETCH(QString, id);
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setSelectedExchangeId(id);
        QTEST(viewModel.selectedExchange().name, "name");
        QCOMPARE(viewModel.selectedExchangeId(), id);
    }

    void lookingAtAMissingRecordInsertsNothing()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setSelectedExchangeId(u"nowhere"_s);
        QCOMPARE(viewModel.selectedDraft(), ExchangeCredentialDraft());
        QCOMPARE(viewModel.selectedApiKey(), QString());
        QCOMPARE(viewModel.exchangeDrafts().size(), exchangeCatalogue().size());
        viewModel.setSelectedApiSecret(u"S"_s);
        ExchangeCredentialDraft expected;
        expected.apiSecret = u"S"_s;
        QCOMPARE(viewModel.exchangeDrafts().size(), exchangeCatalogue().size() + 1);
        QCOMPARE(viewModel.exchangeDrafts().value(u"nowhere"_s), expected);
    }

    void recordIsReplacedInOneAssignment()
    {
        const FakeConnector connector;
        connector.answer(u"load-credentials"_s, u"status=ok\napi_key=AK\napi_secret=AS\npassphrase=AP"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        ExchangeCredentialDraft whole;
        whole.apiKey = u"AK"_s;
        whole.apiSecret = u"AS"_s;
        whole.passphrase = u"AP"_s;
        whole.loadedFromVault = true;
        QList<ExchangeCredentialDraft> seen;
        connect(&viewModel, &ConnectorViewModel::exchangeDraftsChanged, this,
                [&] { seen += viewModel.selectedDraft(); });
        viewModel.loadSelectedExchangeCredentials();
        QCOMPARE(seen, QList({whole}));
    }
};

static const TestClass<TestExchangeRecords> testExchangeRecords("tst_exchangerecords");

#include "tst_exchangerecords.moc"
