#include "exchanges/balancesummary.h"
#include "support/testprogram.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <algorithm>
#include <array>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

struct Answer
{
    const char *file;
    const char *exchangeId;
    const char *headline;
    std::vector<const char *> details;
};

const char *const loaded = "Balance loaded";
const std::vector<const char *> inLog{"Raw response available in technical log"};

// Where several currencies are listed, each value is the first filled one of its own key, so the amount
// and the currency may be of different entries.
const std::vector<Answer> answers{
    {"bybit-unified", "bybit", "8241.77310564 ETH", {"Total equity", "Wallet balance: 2.04150000 ETH"}},
    {"bybit-unified.pretty", "bybit", loaded, inLog},
    {"bybit-three-coins", "bybit", "511.09 SOL", {"Total equity", "Wallet balance: 0 SOL"}},
    {"bybit-contract-empty-totals", "bybit", loaded, inLog},
    {"bybit-contract-then-unified", "bybit", "64.20 USDT", {"Total equity", "Wallet balance: 77.31 USDT"}},
    {"bybit-no-coins", "bybit", loaded, inLog},
    {"bybit-funding", "bybit", loaded, inLog},
    {"bybit-error-key", "bybit", loaded, inLog},

    {"okx-balance", "okx", "683.914500018 USDT", {"Available balance", "Cash balance: 705.164500018 USDT"}},
    {"okx-balance.pretty", "okx", loaded, inLog},
    {"okx-two-coins", "okx", "0.730041 BTC", {"Available balance", "Cash balance: 0.730941 BTC"}},
    {"okx-first-available-empty", "okx", "1.75 USDT", {"Available balance", "Cash balance: 310.4 USDT"}},
    {"okx-multi-margin-empty", "okx", loaded, inLog},
    {"okx-no-details", "okx", loaded, inLog},
    {"okx-bare-available", "okx", loaded, inLog},
    {"okx-funding", "okx", loaded, inLog},
    {"okx-error-key", "okx", loaded, inLog},

    {"gate-futures", "gate", "2515.928730021 USDT", {"Available", "Total: 2604.118730021 USDT"}},
    {"gate-futures.pretty", "gate", loaded, inLog},
    {"gate-history-first", "gate", "34.81 USDT", {"Available", "Total: 35.07 USDT"}},
    {"gate-sub-accounts", "gate", "0.0144 BTC", {"Available", "Total: 0.0152 BTC"}},
    {"gate-spot", "gate", loaded, inLog},
    {"gate-unified", "gate", loaded, inLog},
    {"gate-unified-then-spot", "gate", "0.31 USDT", {"Available", "Total: 612.40 USDT"}},
    {"gate-total-balance", "gate", loaded, inLog},
    {"gate-error-key", "gate", loaded, inLog},
    {"gate-error-no-futures-account", "gate", loaded, inLog},

    {"bingx-swap-v2", "bingx", "71.2250 USDT", {"Available margin", "Equity: 90.0021 USDT"}},
    {"bingx-swap-v2.pretty", "bingx", loaded, inLog},
    {"bingx-swap-v3", "bingx", "601.0000 USDT", {"Available margin", "Equity: 640.1500 USDT"}},
    {"bingx-second-empty", "bingx", "75.0000 USDT", {"Available margin", "Equity: 75.0000 USDT"}},
    {"bingx-first-empty", "bingx", "29.5000 VST", {"Available margin", "Equity: 31.0000 VST"}},
    {"bingx-masked-user", "bingx", "43.1 USDT", {"Available margin", "Equity: 45.5 USDT"}},
    {"bingx-coin-m", "bingx", "3.0700221 LTC", {"Available margin", "Equity: 3.13 LTC"}},
    {"bingx-swap-v1-bare", "bingx", loaded, inLog},
    {"bingx-spot", "bingx", loaded, inLog},
    {"bingx-error-key", "bingx", loaded, inLog},

    {"kucoin-margin", "kucoin", "12.35 USDT", {"Available balance", "Held: 2.25 USDT"}},
    {"kucoin-margin.pretty", "kucoin", loaded, inLog},
    {"kucoin-margin-two-coins", "kucoin", "6.9 KCS", {"Available balance", "Held: 0.2 KCS"}},
    {"kucoin-margin-first-empty", "kucoin", "54.5 KCS", {"Available balance", "Held: 0.5 KCS"}},
    {"kucoin-isolated-margin", "kucoin", "0.8 ETH", {"Available balance", "Held: 0.1 ETH"}},
    {"kucoin-push-bare", "kucoin", "4180 USDT", {"Available balance", "Held: 96.5 USDT"}},
    {"kucoin-push-quoted", "kucoin", "377.041200 XBT", {"Available balance", "Held: 1.50 XBT"}},
    {"kucoin-bare-and-quoted", "kucoin", "318.125 USDT", {"Available balance", "Held: 0 USDT"}},
    {"kucoin-quoted-then-bare", "kucoin", "812 BTC", {"Available balance", "Held: 3 BTC"}},
    {"kucoin-negative-then-bare", "kucoin", "6.75 BTC", {"Available balance", "Held: 0.0 BTC"}},
    {"kucoin-futures-overview", "kucoin", loaded, inLog},
    {"kucoin-futures-overview.pretty", "kucoin", loaded, inLog},
    {"kucoin-spot", "kucoin", loaded, inLog},
    {"kucoin-error-key", "kucoin", loaded, inLog},

    {"bitget-mix",
     "bitget",
     "7305.90021184 USDT",
     {"Available futures balance", "Account equity: 7316.40211800 USDT"}},
    {"bitget-mix.pretty", "bitget", loaded, inLog},
    {"bitget-mix-nulls", "bitget", "0 USDC", {"Available futures balance", "Account equity: 0 USDC"}},
    {"bitget-negative",
     "bitget",
     "-120.55 USDT",
     {"Available futures balance", "Account equity: -131.00482 USDT"}},
    {"bitget-sub-accounts",
     "bitget",
     "17.4 USDT",
     {"Available futures balance", "Account equity: 18.02 USDT"}},
    {"bitget-inner-asset-first",
     "bitget",
     "0.051 USDT",
     {"Available futures balance", "Account equity: 655.1 USDT"}},
    {"bitget-mix-v1", "bitget", loaded, inLog},
    {"bitget-unified-assets", "bitget", loaded, inLog},
    {"bitget-error-key", "bitget", loaded, inLog},
    {"bitget-error-legacy", "bitget", "Could not load balance", {"Unknown error"}},

    {"connector-error", "okx", "Could not load balance", {"credentials not found"}},
    {"connector-error.pretty", "okx", loaded, inLog},
    {"connector-error-without-reason", "gate", "Could not load balance", {"Unknown error"}},
};

QStringList texts(const std::vector<const char *> &literals)
{
    QStringList list;
    std::ranges::transform(literals, std::back_inserter(list),
                           [](const char *literal) { return QString::fromUtf8(literal); });
    return list;
}

QString fixture(const QString &name)
{
    QFile file(u":/fixtures/%1.json"_s.arg(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class TestBalanceAnswers : public QObject
{
    Q_OBJECT

private slots:
    void summarises_data()
    {
        QTest::addColumn<QString>("exchangeId");
        QTest::addColumn<QString>("headline");
        QTest::addColumn<QStringList>("details");

        for (const Answer &answer : answers) {
            QTest::newRow(answer.file) << QString::fromUtf8(answer.exchangeId)
                                       << QString::fromUtf8(answer.headline) << texts(answer.details);
        }
    }

    void summarises()
    {
        QFETCH(const QString, exchangeId);
        QFETCH(const QString, headline);
        QFETCH(const QStringList, details);

        const QString text = fixture(QString::fromUtf8(QTest::currentDataTag()));
        QVERIFY(!text.isEmpty());
        const ParsedBalanceView view = balanceSummary(exchangeId, text).value_or(ParsedBalanceView{});
        QCOMPARE(view.title, u"Balance"_s);
        QCOMPARE(view.headline, headline);
        QCOMPARE(view.details, details);
        QCOMPARE(view.rawOutput, text);
    }

    void namesEveryFixture()
    {
        QStringList expected;
        for (const Answer &answer : answers) {
            expected.append(QString::fromUtf8(answer.file) + u".json"_s);
        }
        expected.sort();
        QStringList present = QDir(u":/fixtures"_s).entryList();
        present.sort();
        QCOMPARE(present, expected);
    }
};

static const TestClass<TestBalanceAnswers> testBalanceAnswers("tst_balanceanswers");

#include "tst_balanceanswers.moc"
