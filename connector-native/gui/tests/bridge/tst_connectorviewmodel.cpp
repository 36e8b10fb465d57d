#include "support/testprogram.h"
#include "viewmodeltesting.h"

class TestConnectorViewModel : public QObject
{
    Q_OBJECT

private slots:
    void startsWithInitialValues_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QVariant>("value");

        QTest::newRow("bindToken") << "bindToken"_ba << QVariant(QString());
        QTest::newRow("selectedExchangeId") << "selectedExchangeId"_ba << QVariant(u"bybit"_s);
        QTest::newRow("connectorStatus") << "connectorStatus"_ba << QVariant(u"unknown"_s);
        QTest::newRow("serverStatus") << "serverStatus"_ba << QVariant(u"unknown"_s);
        QTest::newRow("bindingStatus") << "bindingStatus"_ba << QVariant(u"not bound"_s);
        QTest::newRow("lastStatusOutput") << "lastStatusOutput"_ba << QVariant(QString());
        QTest::newRow("lastServerOutput") << "lastServerOutput"_ba << QVariant(QString());
        QTest::newRow("lastBindingOutput") << "lastBindingOutput"_ba << QVariant(QString());
        QTest::newRow("lastUpdateOutput") << "lastUpdateOutput"_ba << QVariant(QString());
        QTest::newRow("lastDisconnectOutput") << "lastDisconnectOutput"_ba << QVariant(QString());
        QTest::newRow("logsExpanded") << "logsExpanded"_ba << QVariant(false);
        QTest::newRow("tokenDetailsExpanded") << "tokenDetailsExpanded"_ba << QVariant(false);
        QTest::newRow("pressedButtonId") << "pressedButtonId"_ba << QVariant(QString());
        QTest::newRow("hasSelectedBalance") << "hasSelectedBalance"_ba << QVariant(false);
    }

    void startsWithInitialValues()
    {
        QFETCH(QByteArray, property);
        const FakeConnector connector;
        const ConnectorViewModel viewModel(connector.place(), endlessPause);
        QTEST(viewModel.property(property.constData()), "value");
    }

    void startsIdleWithAnEmptyLog()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        QCOMPARE(viewModel.logs()->count(), 0);
        QVERIFY(!viewModel.isPolling());
        QVERIFY(viewModel.findChildren<StatusPollTask *>().isEmpty());
    }

    void startsWithOneInitialDraftPerExchange()
    {
        const FakeConnector connector;
        const ConnectorViewModel viewModel(connector.place(), endlessPause);
        QCOMPARE(viewModel.exchanges(), exchangeCatalogue());
        QCOMPARE(viewModel.exchangeDrafts().size(), exchangeCatalogue().size());
        for (const ExchangeItem &exchange : viewModel.exchanges()) {
            QVERIFY2(viewModel.exchangeDrafts().contains(exchange.id), qPrintable(exchange.id));
            QCOMPARE(viewModel.exchangeDrafts().value(exchange.id), ExchangeCredentialDraft());
        }
    }

    void constructionRunsNothing()
    {
        const FakeConnector connector;
        const ConnectorViewModel viewModel(connector.place(), std::chrono::milliseconds(1));
        QCoreApplication::processEvents();
        QCOMPARE(connector.callArguments(), QList<QStringList>());
    }

    void destructionRunsNothing()
    {
        const FakeConnector connector;
        {
            ConnectorViewModel viewModel(connector.place(), std::chrono::milliseconds(1));
            viewModel.startStatusPolling();
        }
        QCoreApplication::processEvents();
        QCOMPARE(connector.callArguments(), QList<QStringList>());
    }
};

static const TestClass<TestConnectorViewModel> testConnectorViewModel("tst_connectorviewmodel");

#include "tst_connectorviewmodel.moc"
