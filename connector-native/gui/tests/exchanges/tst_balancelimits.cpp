#include "exchanges/balancesummary.h"
#include "support/processortimer.h"
#include "support/testprogram.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mebi = 1 << 20;

// A text whose search time grew with the square of its length would take minutes at this size, so a limit
// far above the few milliseconds it needs still tells the two apart on a slow machine.
constexpr qint64 limitMilliseconds = 2000;

QString repeated(const QString &part)
{
    return part.repeated(mebi / part.size() + 1);
}

} // namespace

class TestBalanceLimits : public QObject
{
    Q_OBJECT

private slots:
    void searchesHostileText_data()
    {
        QTest::addColumn<QString>("text");

        QTest::newRow("quotes only") << repeated(u"\""_s);
        QTest::newRow("one unclosed value") << u"\"availBal\":\""_s + repeated(u"1"_s);
        QTest::newRow("one unclosed value outside the BMP")
            << u"\"availBal\":\""_s + repeated(u"\U0001F4B0"_s);
        QTest::newRow("half keys of okx") << repeated(u"\"availBa"_s);
        QTest::newRow("keys without values of okx") << repeated(u"\"availBal\":"_s);
        QTest::newRow("empty values of okx") << repeated(u"\"availBal\":\"\","_s);
        QTest::newRow("opened values of okx") << repeated(u"\"availBal\":\""_s);
        QTest::newRow("two fields of three of okx") << repeated(u"\"availBal\":\"1\",\"cashBal\":\"2\","_s);
        QTest::newRow("two fields of three of gate") << repeated(u"\"total\":\"1\",\"available\":\"2\","_s);
        QTest::newRow("half keys of kucoin") << repeated(u"\"availableBalance\""_s);
        QTest::newRow("negative numbers of kucoin") << repeated(u"\"availableBalance\":-1,"_s);
        QTest::newRow("one endless number of kucoin") << u"\"availableBalance\":"_s + repeated(u"1."_s);
        QTest::newRow("numbers of kucoin alone") << repeated(u"\"availableBalance\":1"_s);
        QTest::newRow("half error markers") << repeated(u"\"status\":\"erro"_s);
        QTest::newRow("NULs") << QString(mebi, QChar(u'\0'));
        QTest::newRow("line feeds") << QString(mebi, u'\n');
    }

    void searchesHostileText()
    {
        QFETCH(const QString, text);

        const ProcessorTimer timer;
        for (const QString &id : {u"bybit"_s, u"okx"_s, u"gate"_s, u"bingx"_s, u"kucoin"_s, u"bitget"_s}) {
            const ParsedBalanceView view = balanceSummary(id, text).value_or(ParsedBalanceView{});
            QCOMPARE(view.headline, u"Balance loaded"_s);
            QCOMPARE(view.rawOutput.size(), text.size());
        }
        QCOMPARE_LT(timer.elapsed(), limitMilliseconds);
    }

    void takesHugeValue_data()
    {
        QTest::addColumn<QString>("exchangeId");
        QTest::addColumn<QString>("opening");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("closing");

        const QString okxRest = u"\",\"cashBal\":\"2\",\"ccy\":\"C\""_s;
        const QString kucoinRest = u",\"holdBalance\":2,\"currency\":\"C\""_s;
        QTest::newRow("digits") << u"okx"_s << u"\"availBal\":\""_s << repeated(u"1"_s) << okxRest;
        QTest::newRow("line feeds") << u"okx"_s << u"\"availBal\":\""_s << repeated(u"\n"_s) << okxRest;
        QTest::newRow("characters outside the BMP")
            << u"okx"_s << u"\"availBal\":\""_s << repeated(u"\U0001F4B0"_s) << okxRest;
        QTest::newRow("bare digits") << u"kucoin"_s << u"\"availableBalance\":"_s << repeated(u"1."_s)
                                     << kucoinRest;
    }

    void takesHugeValue()
    {
        QFETCH(const QString, exchangeId);
        QFETCH(const QString, opening);
        QFETCH(const QString, value);
        QFETCH(const QString, closing);

        const ProcessorTimer timer;
        const std::optional<ParsedBalanceView> view = balanceSummary(exchangeId, opening + value + closing);
        QCOMPARE_LT(timer.elapsed(), limitMilliseconds);
        QVERIFY(view.has_value());
        QVERIFY(view->headline == value + u" C"_s);
    }

    void findsFieldsBehindLongText_data()
    {
        QTest::addColumn<QString>("before");

        QTest::newRow("blanks") << QString(mebi, u' ');
        QTest::newRow("quotes") << repeated(u"\""_s);
        QTest::newRow("empty values") << repeated(u"\"availBal\":\"\",\"cashBal\":\"\",\"ccy\":\"\","_s);
        QTest::newRow("half keys") << repeated(u"\"availBa\"cashBa\"cc"_s);
        QTest::newRow("bare values") << repeated(u"\"availBal\":1,\"cashBal\":2,\"ccy\":3,"_s);
    }

    void findsFieldsBehindLongText()
    {
        QFETCH(const QString, before);

        const QString text = before + u"\"availBal\":\"1\",\"cashBal\":\"2\",\"ccy\":\"C\""_s;
        const ProcessorTimer timer;
        const std::optional<ParsedBalanceView> view = balanceSummary(u"okx"_s, text);
        QCOMPARE_LT(timer.elapsed(), limitMilliseconds);
        QVERIFY(view.has_value());
        QCOMPARE(view->headline, u"1 C"_s);
        QCOMPARE(view->details, (QStringList{u"Available balance"_s, u"Cash balance: 2 C"_s}));
    }

    void takesHugeReason()
    {
        const QString text = u"{\"status\":\"error\",\"reason\":\"%1\"}"_s.arg(repeated(u"a_"_s));
        const ProcessorTimer timer;
        const std::optional<ParsedBalanceView> view = balanceSummary(u"okx"_s, text);
        QCOMPARE_LT(timer.elapsed(), limitMilliseconds);
        QVERIFY(view.has_value());
        QVERIFY(view->details == QStringList{repeated(u"a "_s)});
    }
};

static const TestClass<TestBalanceLimits> testBalanceLimits("tst_balancelimits");

#include "tst_balancelimits.moc"
