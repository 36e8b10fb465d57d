#include "exchanges/exchangecatalogue.h"
#include "exchanges/exchangecredentialdraft.h"
#include "support/testprogram.h"

#include <QtCore/QMetaProperty>

using namespace Qt::StringLiterals;

class TestExchangeCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void listsExchangesInTabOrder_data()
    {
        QTest::addColumn<qsizetype>("index");
        QTest::addColumn<ExchangeItem>("item");

        QTest::newRow("first is Bybit") << qsizetype(0) << ExchangeItem{u"bybit"_s, u"Bybit"_s, false};
        QTest::newRow("second is OKX") << qsizetype(1) << ExchangeItem{u"okx"_s, u"OKX"_s, true};
        QTest::newRow("third is Gate") << qsizetype(2) << ExchangeItem{u"gate"_s, u"Gate"_s, false};
        QTest::newRow("fourth is BingX") << qsizetype(3) << ExchangeItem{u"bingx"_s, u"BingX"_s, false};
        QTest::newRow("fifth is KuCoin") << qsizetype(4) << ExchangeItem{u"kucoin"_s, u"KuCoin"_s, true};
        QTest::newRow("sixth is Bitget") << qsizetype(5) << ExchangeItem{u"bitget"_s, u"Bitget"_s, true};
    }

    void listsExchangesInTabOrder()
    {
        QFETCH(const qsizetype, index);
        QFETCH(const ExchangeItem, item);

        const ExchangeItem listed = exchangeCatalogue().value(index);
        QCOMPARE(listed.id, item.id);
        QCOMPARE(listed.name, item.name);
        QCOMPARE(listed.needsPassphrase, item.needsPassphrase);
    }

    void listsNoOtherExchange() { QCOMPARE(exchangeCatalogue().size(), 6); }

    void findsExchange_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("name");

        for (const ExchangeItem &item : exchangeCatalogue()) {
            QTest::addRow("%s by its id", qPrintable(item.name)) << item.id << item.name;
        }
        QTest::newRow("unknown id falls back to the first") << u"kraken"_s << u"Bybit"_s;
        QTest::newRow("empty id falls back to the first") << u""_s << u"Bybit"_s;
        QTest::newRow("a name is no id") << u"OKX"_s << u"Bybit"_s;
        QTest::newRow("ids are not trimmed") << u"okx "_s << u"Bybit"_s;
    }

    void findsExchange()
    {
        QFETCH(const QString, id);
        QFETCH(const QString, name);

        QCOMPARE(exchangeOrFirst(id).name, name);
    }

    void comparesItemsMemberByMember_data()
    {
        QTest::addColumn<ExchangeItem>("other");
        QTest::addColumn<bool>("equal");

        QTest::newRow("same members") << ExchangeItem{u"okx"_s, u"OKX"_s, true} << true;
        QTest::newRow("other id") << ExchangeItem{u"okx2"_s, u"OKX"_s, true} << false;
        QTest::newRow("other name") << ExchangeItem{u"okx"_s, u"Okx"_s, true} << false;
        QTest::newRow("other passphrase need") << ExchangeItem{u"okx"_s, u"OKX"_s, false} << false;
    }

    void comparesItemsMemberByMember()
    {
        QFETCH(const ExchangeItem, other);
        QFETCH(const bool, equal);

        const ExchangeItem item = exchangeOrFirst(u"okx"_s);
        QCOMPARE(item == other, equal);
        QCOMPARE(qHash(item) == qHash(other), equal);
    }

    void startsWithInitialDraft_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QVariant>("value");

        QTest::newRow("apiKey is empty") << 0 << "apiKey"_ba << QVariant(u""_s);
        QTest::newRow("apiSecret is empty") << 1 << "apiSecret"_ba << QVariant(u""_s);
        QTest::newRow("passphrase is empty") << 2 << "passphrase"_ba << QVariant(u""_s);
        QTest::newRow("status is not checked") << 3 << "status"_ba << QVariant(u"not checked"_s);
        QTest::newRow("balance is not loaded") << 4 << "balance"_ba << QVariant(u"not loaded"_s);
        QTest::newRow("validationOutput is empty") << 5 << "validationOutput"_ba << QVariant(u""_s);
        QTest::newRow("loadedFromVault is false") << 6 << "loadedFromVault"_ba << QVariant(false);
        QTest::newRow("valid is false") << 7 << "valid"_ba << QVariant(false);
    }

    void startsWithInitialDraft()
    {
        QFETCH(const int, position);
        QFETCH(const QByteArray, property);
        QFETCH(const QVariant, value);

        const ExchangeCredentialDraft draft;
        const QMetaProperty member = ExchangeCredentialDraft::staticMetaObject.property(position);
        QCOMPARE(QByteArray(member.name()), property);
        QCOMPARE(member.readOnGadget(&draft), value);
    }

    void comparesDraftsMemberByMember_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QVariant>("value");

        QTest::newRow("other apiKey") << 0 << QVariant(u"x"_s);
        QTest::newRow("other apiSecret") << 1 << QVariant(u"x"_s);
        QTest::newRow("other passphrase") << 2 << QVariant(u"x"_s);
        QTest::newRow("other status") << 3 << QVariant(u"x"_s);
        QTest::newRow("other balance") << 4 << QVariant(u"x"_s);
        QTest::newRow("other validationOutput") << 5 << QVariant(u"x"_s);
        QTest::newRow("other loadedFromVault") << 6 << QVariant(true);
        QTest::newRow("other valid") << 7 << QVariant(true);
    }

    void comparesDraftsMemberByMember()
    {
        QFETCH(const int, position);
        QFETCH(const QVariant, value);

        ExchangeCredentialDraft draft;
        QVERIFY(draft == ExchangeCredentialDraft{});
        QVERIFY(ExchangeCredentialDraft::staticMetaObject.property(position).writeOnGadget(&draft, value));
        QVERIFY(draft != ExchangeCredentialDraft{});
    }
};

static const TestClass<TestExchangeCatalogue> testExchangeCatalogue("tst_exchangecatalogue");

#include "tst_exchangecatalogue.moc"
