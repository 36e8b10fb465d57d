#include "exchanges/balancesummary.h"
#include "support/testprogram.h"

#include <QtCore/QMetaProperty>

#include <array>

using namespace Qt::StringLiterals;

namespace {

const QString loadedHeadline = u"Balance loaded"_s;
const QStringList loadedDetails{u"Raw response available in technical log"_s};

struct Fields
{
    const char *exchangeId;
    std::array<const char *, 3> keys;
};

// The keys each exchange's answer must hold, each as a quoted, filled value.
constexpr std::array requiredFields{
    Fields{"bybit", {"totalEquity", "walletBalance", "coin"}},
    Fields{"okx", {"availBal", "cashBal", "ccy"}},
    Fields{"gate", {"total", "available", "currency"}},
    Fields{"bingx", {"equity", "availableMargin", "asset"}},
    Fields{"kucoin", {"availableBalance", "holdBalance", "currency"}},
    Fields{"bitget", {"available", "accountEquity", "marginCoin"}},
};

// An answer whose value under the key at `index` is written as given, the others being filled.
QString answerWith(const Fields &fields, std::size_t index, const QString &literal)
{
    QStringList members;
    for (std::size_t i = 0; i < fields.keys.size(); ++i) {
        const QString value = i == index ? literal : u"\"7\""_s;
        members.append(u"\"%1\":%2"_s.arg(QLatin1StringView(fields.keys.at(i)), value));
    }
    return u"{%1}"_s.arg(members.join(u','));
}

} // namespace

class TestBalanceSummary : public QObject
{
    Q_OBJECT

private slots:
    void isAbsent_data()
    {
        QTest::addColumn<QString>("balance");

        QTest::newRow("no answer") << u""_s;
        QTest::newRow("null text") << QString();
        QTest::newRow("not loaded yet") << u"not loaded"_s;
    }

    void isAbsent()
    {
        QFETCH(const QString, balance);

        QVERIFY(!balanceSummary(u"okx"_s, balance).has_value());
        QVERIFY(!balanceSummary(u"kraken"_s, balance).has_value());
    }

    void readsFields_data()
    {
        QTest::addColumn<QString>("exchangeId");
        QTest::addColumn<QString>("balance");
        QTest::addColumn<QString>("headline");
        QTest::addColumn<QStringList>("details");

        QTest::newRow("bybit shows the first amount")
            << u"bybit"_s << uR"({"totalEquity":"1","coin":[{"walletBalance":"2","coin":"C"}]})"_s << u"1 C"_s
            << QStringList{u"Total equity"_s, u"Wallet balance: 2 C"_s};
        QTest::newRow("okx shows the first amount")
            << u"okx"_s << uR"({"availBal":"12.5","cashBal":"13","ccy":"USDT"})"_s << u"12.5 USDT"_s
            << QStringList{u"Available balance"_s, u"Cash balance: 13 USDT"_s};
        QTest::newRow("gate shows the second amount")
            << u"gate"_s << uR"({"total":"100","available":"80","currency":"USDT"})"_s << u"80 USDT"_s
            << QStringList{u"Available"_s, u"Total: 100 USDT"_s};
        QTest::newRow("bingx shows the second amount")
            << u"bingx"_s << uR"({"asset":"C","equity":"1","availableMargin":"2"})"_s << u"2 C"_s
            << QStringList{u"Available margin"_s, u"Equity: 1 C"_s};
        QTest::newRow("kucoin shows the first amount")
            << u"kucoin"_s << uR"({"availableBalance":"1","holdBalance":"2","currency":"C"})"_s << u"1 C"_s
            << QStringList{u"Available balance"_s, u"Held: 2 C"_s};
        QTest::newRow("bitget shows the first amount")
            << u"bitget"_s << uR"({"marginCoin":"C","available":"1","accountEquity":"2"})"_s << u"1 C"_s
            << QStringList{u"Available futures balance"_s, u"Account equity: 2 C"_s};
    }

    void readsFields()
    {
        QFETCH(const QString, exchangeId);
        QFETCH(const QString, balance);
        QFETCH(const QString, headline);
        QFETCH(const QStringList, details);

        const ParsedBalanceView view = balanceSummary(exchangeId, balance).value_or(ParsedBalanceView{});
        QCOMPARE(view.title, u"Balance"_s);
        QCOMPARE(view.headline, headline);
        QCOMPARE(view.details, details);
        QCOMPARE(view.rawOutput, balance);
    }

    void needsEveryField_data()
    {
        QTest::addColumn<QString>("exchangeId");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("balance");

        constexpr std::array literals{
            std::pair{"null", "null"}, std::pair{"an empty string", "\"\""}, std::pair{"an object", "{}"},
            std::pair{"a list", "[]"}, std::pair{"after a blank", " \"7\""}, std::pair{"negative", "-7"},
        };
        for (const Fields &fields : requiredFields) {
            const QString id = QLatin1StringView(fields.exchangeId);
            for (std::size_t i = 0; i < fields.keys.size(); ++i) {
                const char *key = fields.keys.at(i);
                for (const auto &[name, literal] : literals) {
                    QTest::addRow("%s with %s %s", fields.exchangeId, key, name)
                        << id << QString::fromLatin1(key)
                        << answerWith(fields, i, QString::fromLatin1(literal));
                }
                QTest::addRow("%s without %s", fields.exchangeId, key)
                    << id << QString::fromLatin1(key)
                    << answerWith(fields, i, u"\"7\""_s).replace(QLatin1StringView(key), u"other"_s);
                QTest::addRow("%s with %s in other case", fields.exchangeId, key)
                    << id << QString::fromLatin1(key)
                    << answerWith(fields, i, u"\"7\""_s)
                           .replace(QLatin1StringView(key), QString::fromLatin1(key).toUpper());
            }
        }
    }

    void needsEveryField()
    {
        QFETCH(const QString, exchangeId);
        QFETCH(const QString, key);
        QFETCH(const QString, balance);

        const ParsedBalanceView view = balanceSummary(exchangeId, balance).value_or(ParsedBalanceView{});
        QCOMPARE(view.title, u"Balance"_s);
        QCOMPARE(view.headline, loadedHeadline);
        QCOMPARE(view.details, loadedDetails);
        QCOMPARE(view.rawOutput, balance);

        const QString complete = balance + u"\"%1\":\"8\""_s.arg(key);
        const ParsedBalanceView filled = balanceSummary(exchangeId, complete).value_or(ParsedBalanceView{});
        QVERIFY(filled.headline != loadedHeadline);
    }

    void fallsBack_data()
    {
        QTest::addColumn<QString>("exchangeId");
        QTest::addColumn<QString>("balance");

        const QString okx = uR"({"availBal":"1","cashBal":"2","ccy":"C"})"_s;
        QTest::newRow("unknown exchange") << u"kraken"_s << okx;
        QTest::newRow("empty exchange id") << u""_s << okx;
        QTest::newRow("exchange id in other case") << u"OKX"_s << okx;
        QTest::newRow("answer of another exchange") << u"gate"_s << okx;
        QTest::newRow("okx with a bare available number")
            << u"okx"_s << uR"({"availBal":12.5,"cashBal":"13","ccy":"USDT"})"_s;
        QTest::newRow("kucoin with a bare currency")
            << u"kucoin"_s << uR"({"availableBalance":1,"holdBalance":2,"currency":3})"_s;
        QTest::newRow("kucoin with a number of other digits")
            << u"kucoin"_s << u"{\"availableBalance\":\u0661,\"holdBalance\":2,\"currency\":\"C\"}"_s;
        QTest::newRow("value left open at the end")
            << u"okx"_s << u"\"ccy\":\"C\",\"cashBal\":\"2\",\"availBal\":\"1"_s;
        QTest::newRow("text ends after the opening quote")
            << u"okx"_s << u"\"ccy\":\"C\",\"cashBal\":\"2\",\"availBal\":\""_s;
        QTest::newRow("CR LF between key and value")
            << u"okx"_s << u"\"availBal\":\r\n\"1\",\"cashBal\":\"2\",\"ccy\":\"C\""_s;
        QTest::newRow("only a blank") << u"okx"_s << u" "_s;
        QTest::newRow("only a NUL") << u"okx"_s << u"\0"_s;
        QTest::newRow("words for no answer with a line feed") << u"okx"_s << u"not loaded\n"_s;
        QTest::newRow("failed launch")
            << u"okx"_s << u"failed to run connector: no such file\nresolved_path=/x"_s;
        QTest::newRow("half a surrogate pair") << u"okx"_s << okx + QChar(u'\xd83d') + uR"("availBal":"1")"_s;
    }

    void fallsBack()
    {
        QFETCH(const QString, exchangeId);
        QFETCH(const QString, balance);

        const ParsedBalanceView expected{u"Balance"_s, loadedHeadline, loadedDetails, balance};
        QCOMPARE(balanceSummary(exchangeId, balance), expected);
    }

    void reportsError_data()
    {
        QTest::addColumn<QString>("balance");
        QTest::addColumn<QString>("reason");

        QTest::newRow("underscores become blanks")
            << uR"({"status":"error","reason":"invalid_api_key"})"_s << u"invalid api key"_s;
        QTest::newRow("reason before the status")
            << uR"({"reason":"_no__key_","status":"error"})"_s << u" no  key "_s;
        QTest::newRow("no reason") << uR"({"status":"error"})"_s << u"Unknown error"_s;
        QTest::newRow("empty reason") << uR"({"status":"error","reason":""})"_s << u"Unknown error"_s;
        QTest::newRow("empty reason gives way to a later one")
            << uR"({"status":"error","reason":"","reason":"late"})"_s << u"late"_s;
        QTest::newRow("first of two reasons")
            << uR"({"status":"error","reason":"first","reason":"second"})"_s << u"first"_s;
        QTest::newRow("reason after a blank")
            << uR"({"status":"error","reason": "x"})"_s << u"Unknown error"_s;
        QTest::newRow("bare reason") << uR"({"status":"error","reason":7})"_s << u"Unknown error"_s;
        QTest::newRow("reason left open") << u"{\"status\":\"error\",\"reason\":\"x"_s << u"Unknown error"_s;
        QTest::newRow("reason of several lines")
            << u"{\"status\":\"error\",\"reason\":\"a\nb\"}"_s << u"a\nb"_s;
        QTest::newRow("reason with characters outside the BMP")
            << u"{\"status\":\"error\",\"reason\":\"\U0001F512_\U0001F511\"}"_s << u"\U0001F512 \U0001F511"_s;
        QTest::newRow("error comes before complete fields")
            << uR"({"availBal":"1","cashBal":"2","ccy":"C","total":"1","available":"1","status":"error"})"_s
            << u"Unknown error"_s;
        QTest::newRow("error deep inside other text")
            << u"log line\n[{\"a\":[{\"status\":\"error\"}]}]\n"_s << u"Unknown error"_s;
    }

    void reportsError()
    {
        QFETCH(const QString, balance);
        QFETCH(const QString, reason);

        const ParsedBalanceView expected{u"Balance"_s, u"Could not load balance"_s, {reason}, balance};
        for (const Fields &fields : requiredFields) {
            QCOMPARE(balanceSummary(QLatin1StringView(fields.exchangeId), balance), expected);
        }
        QCOMPARE(balanceSummary(u"kraken"_s, balance), expected);
    }

    void showsItsMembersToQml()
    {
        const ParsedBalanceView view{u"t"_s, u"h"_s, {u"a"_s, u"b"_s}, u"r"_s};
        const QVariantList expected{u"t"_s, u"h"_s, QStringList{u"a"_s, u"b"_s}, u"r"_s};

        const QMetaObject &meta = ParsedBalanceView::staticMetaObject;
        QVariantList values;
        for (int i = 0; i < meta.propertyCount(); ++i) {
            values.append(meta.property(i).readOnGadget(&view));
        }
        QCOMPARE(values, expected);
    }
};

static const TestClass<TestBalanceSummary> testBalanceSummary("tst_balancesummary");

#include "tst_balancesummary.moc"
