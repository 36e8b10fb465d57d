#include "exchangetesting.h"
#include "support/testprogram.h"

#include <QSignalSpy>

#include <optional>

class TestBalanceLoading : public QObject
{
    Q_OBJECT

private slots:
    void balanceNamesItsArguments_data()
    {
        using Text = std::optional<QString>;
        QTest::addColumn<QString>("selected");
        QTest::addColumn<Text>("exchangeId");
        QTest::addColumn<Text>("title");
        QTest::addColumn<QString>("logged");
        QTest::addColumn<QString>("record");

        const Text none;
        QTest::newRow("neither") << u"kucoin"_s << none << none << u"balance KuCoin"_s << u"kucoin"_s;
        QTest::newRow("both") << u"gate"_s << Text(u"okx"_s) << Text(u"OKX"_s) << u"balance OKX"_s
                              << u"okx"_s;
        QTest::newRow("an id without a title is logged under the selection")
            << u"gate"_s << Text(u"okx"_s) << none << u"balance Gate"_s << u"okx"_s;
        QTest::newRow("a title without an id loads the selection")
            << u"gate"_s << none << Text(u"any"_s) << u"balance any"_s << u"gate"_s;
        QTest::newRow("neither, nothing known selected")
            << u"nowhere"_s << none << none << u"balance Bybit"_s << u"bybit"_s;
        QTest::newRow("an empty id is an id")
            << u"gate"_s << Text(u""_s) << none << u"balance Gate"_s << u""_s;
        QTest::newRow("an empty title is a title")
            << u"gate"_s << none << Text(u""_s) << u"balance "_s << u"gate"_s;
    }

    void balanceNamesItsArguments()
    {
        QFETCH(QString, selected);
        QFETCH(std::optional<QString>, exchangeId);
        QFETCH(std::optional<QString>, title);
        QFETCH(QString, record);
        const FakeConnector connector;
        connector.answer(u"balance"_s, u" 1 USDT\n"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setSelectedExchangeId(selected);
        viewModel.loadBalance(exchangeId, title);
        ExchangeCredentialDraft expected;
        expected.balance = u" 1 USDT\n"_s;
        QTEST(titlesOldestFirst(viewModel).constFirst(), "logged");
        QCOMPARE(connector.callArguments(), QList({QStringList{u"balance"_s, record}}));
        QCOMPARE(viewModel.exchangeDrafts().value(record), expected);
        QCOMPARE(viewModel.exchangeDrafts().values().count(ExchangeCredentialDraft()),
                 viewModel.exchangeDrafts().size() - 1);
    }

    void balanceKeepsEveryOtherField()
    {
        const FakeConnector connector;
        connector.answer(u"validate"_s, u"status=valid_read_only\ncredentials_saved=true"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        type(viewModel, u"okx"_s);
        viewModel.validateSelectedExchange();
        ExchangeCredentialDraft expected = viewModel.selectedDraft();
        expected.balance = u"status=error"_s;
        connector.answer(u"balance"_s, u"status=error"_s);
        viewModel.loadBalance();
        QCOMPARE(viewModel.selectedDraft(), expected);
        QCOMPARE(viewModel.selectedDraft().status, u"valid"_s);
    }

    void emptyBalanceIsStoredAsEmpty()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.loadBalance();
        QCOMPARE(viewModel.selectedDraft().balance, u""_s);
        QVERIFY(!viewModel.balanceSummary(u"bybit"_s));
    }

    void deletionUnloadsTheBalance()
    {
        const FakeConnector connector;
        connector.answer(u"balance"_s, u"1 USDT"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.loadBalance();
        viewModel.deleteSelectedExchangeCredentials();
        QCOMPARE(viewModel.selectedDraft().balance, u"not loaded"_s);
        QVERIFY(!viewModel.hasSelectedBalance());
    }

    void summaryFollowsTheSelection()
    {
        const FakeConnector connector;
        connector.answer(u"balance"_s, uR"({"availBal":"12.5","cashBal":"13","ccy":"USDT"})"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        const QSignalSpy changed(&viewModel, &ConnectorViewModel::selectedBalanceChanged);
        viewModel.loadBalance(u"okx"_s, u"OKX"_s);
        QVERIFY(!viewModel.hasSelectedBalance());
        const qsizetype before = changed.count();
        viewModel.setSelectedExchangeId(u"okx"_s);
        QVERIFY(changed.count() > before);
        QVERIFY(viewModel.hasSelectedBalance());
        QCOMPARE(viewModel.selectedBalance().headline, u"12.5 USDT"_s);
        QCOMPARE(viewModel.balanceSummary(u"okx"_s), viewModel.selectedBalance());
        viewModel.setSelectedExchangeId(u"gate"_s);
        QVERIFY(!viewModel.hasSelectedBalance());
        QVERIFY(!viewModel.balanceSummary(u"nowhere"_s));
    }

    void summaryFollowsTheRecord()
    {
        const FakeConnector connector;
        connector.answer(u"balance"_s, uR"({"status":"error","reason":"invalid_api_key"})"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.loadBalance();
        QCOMPARE(viewModel.selectedBalance().headline, u"Could not load balance"_s);
        viewModel.setSelectedApiKey(u"K"_s);
        QCOMPARE(viewModel.selectedBalance().headline, u"Could not load balance"_s);
        connector.answer(u"balance"_s, u"{}"_s);
        viewModel.loadBalance();
        QCOMPARE(viewModel.selectedBalance().headline, u"Balance loaded"_s);
    }
};

static const TestClass<TestBalanceLoading> testBalanceLoading("tst_balanceloading");

#include "tst_balanceloading.moc"
