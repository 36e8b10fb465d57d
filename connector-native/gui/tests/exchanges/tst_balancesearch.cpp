#include "exchanges/balancesummary.h"
#include "support/testprogram.h"

using namespace Qt::StringLiterals;

// How a value is found in an answer, shown on the two exchanges that stand for the two forms of amounts.
class TestBalanceSearch : public QObject
{
    Q_OBJECT

private slots:
    void findsQuotedValue_data()
    {
        QTest::addColumn<QString>("balance");
        QTest::addColumn<QString>("available");

        QTest::newRow("first occurrence wins")
            << uR"("availBal":"1","availBal":"9","cashBal":"2","ccy":"C")"_s << u"1"_s;
        QTest::newRow("empty value gives way to a later filled one")
            << uR"("availBal":"","cashBal":"2","ccy":"C","availBal":"9")"_s << u"9"_s;
        QTest::newRow("bare value gives way to a later quoted one")
            << uR"("availBal":1,"cashBal":"2","ccy":"C","availBal":"9")"_s << u"9"_s;
        QTest::newRow("longer key is another key")
            << uR"("xavailBal":"1","availBal":"9","cashBal":"2","ccy":"C")"_s << u"9"_s;
        QTest::newRow("currency may come first") << uR"("ccy":"C","cashBal":"2","availBal":"9")"_s << u"9"_s;
        QTest::newRow("no JSON around it is needed")
            << u"warning\n\"ccy\":\"C\"\"cashBal\":\"2\"\"availBal\":\"9\"\n"_s << u"9"_s;
        QTest::newRow("blanks are kept") << uR"("availBal":" 9 ","cashBal":"2","ccy":"C")"_s << u" 9 "_s;
        QTest::newRow("amounts are not rounded or checked")
            << uR"("availBal":"-0.00000000000000000001,5e+9?","cashBal":"2","ccy":"C")"_s
            << u"-0.00000000000000000001,5e+9?"_s;
        QTest::newRow("backslash before a quote does not keep the value open")
            << u"\"availBal\":\"9\\\"8\",\"cashBal\":\"2\",\"ccy\":\"C\""_s << u"9\\"_s;
        QTest::newRow("line feeds inside a value")
            << u"\"availBal\":\"9\n8\r\n7\",\"cashBal\":\"2\",\"ccy\":\"C\""_s << u"9\n8\r\n7"_s;
        QTest::newRow("NUL before and inside a value")
            << u"\0\"availBal\":\"9\0008\",\"cashBal\":\"2\",\"ccy\":\"C\""_s << u"9\0008"_s;
        QTest::newRow("characters outside the BMP")
            << u"\U0001F4B0\"availBal\":\"\U0001F4B0\U00010348\",\"cashBal\":\"2\",\"ccy\":\"C\""_s
            << u"\U0001F4B0\U00010348"_s;
        QTest::newRow("combining mark after a quote")
            << u"\"availBal\":\"\u03019\",\"cashBal\":\"2\",\"ccy\":\"C\""_s << u"\u03019"_s;
        QTest::newRow("replacement characters")
            << u"\uFFFD\"availBal\":\"9\uFFFD\",\"cashBal\":\"2\",\"ccy\":\"C\""_s << u"9\uFFFD"_s;
        QTest::newRow("noncharacters")
            << u"\uFFFE\"availBal\":\"9\uFFFF\",\"cashBal\":\"2\",\"ccy\":\"C\""_s << u"9\uFFFF"_s;
        QTest::newRow("the words for no answer inside one")
            << uR"("availBal":"not loaded","cashBal":"2","ccy":"C")"_s << u"not loaded"_s;
        QTest::newRow("markers of arguments are left alone")
            << uR"("availBal":"%1 %2","cashBal":"2","ccy":"C")"_s << u"%1 %2"_s;
    }

    void findsQuotedValue()
    {
        QFETCH(const QString, balance);
        QFETCH(const QString, available);

        const ParsedBalanceView expected{
            u"Balance"_s, available + u" C"_s, {u"Available balance"_s, u"Cash balance: 2 C"_s}, balance};
        QCOMPARE(balanceSummary(u"okx"_s, balance), expected);
    }

    void findsBareNumber_data()
    {
        QTest::addColumn<QString>("balance");
        QTest::addColumn<QString>("headline");

        QTest::newRow("takes a bare number beside a quoted one")
            << uR"({"availableBalance":250.75,"holdBalance":"0","currency":"USDT"})"_s << u"250.75 USDT"_s;
        QTest::newRow("takes a quoted number beside a bare one")
            << uR"({"availableBalance":"9","holdBalance":0,"currency":"USDT"})"_s << u"9 USDT"_s;
        QTest::newRow("prefers a later bare number")
            << uR"({"availableBalance":"1","holdBalance":"0","currency":"USDT","availableBalance":2})"_s
            << u"2 USDT"_s;
        QTest::newRow("cuts a bare number at its exponent")
            << uR"({"availableBalance":1.5e3,"holdBalance":0,"currency":"USDT"})"_s << u"1.5 USDT"_s;
        QTest::newRow("takes a bare number up to the end of the text")
            << uR"("holdBalance":"0","currency":"USDT","availableBalance":42)"_s << u"42 USDT"_s;
        QTest::newRow("checks no form of a bare number")
            << uR"({"availableBalance":1.2.3.,"holdBalance":0,"currency":"USDT"})"_s << u"1.2.3. USDT"_s;
        QTest::newRow("takes ASCII digits only")
            << u"\"availableBalance\":1\u0662,\"holdBalance\":0,\"currency\":\"USDT\""_s << u"1 USDT"_s;
        QTest::newRow("later bare held amount comes first too")
            << uR"({"availableBalance":1,"holdBalance":"5","holdBalance":0,"currency":"USDT"})"_s
            << u"1 USDT"_s;
    }

    void findsBareNumber()
    {
        QFETCH(const QString, balance);
        QFETCH(const QString, headline);

        const ParsedBalanceView expected{
            u"Balance"_s, headline, {u"Available balance"_s, u"Held: 0 USDT"_s}, balance};
        QCOMPARE(balanceSummary(u"kucoin"_s, balance), expected);
    }
};

static const TestClass<TestBalanceSearch> testBalanceSearch("tst_balancesearch");

#include "tst_balancesearch.moc"
