#include "exchanges/balancesummary.h"

#include "fuzzing.h"

#include <vector>

namespace {

using Text = std::u16string;

// The text between the quotes, if there is any and it ends.
std::optional<Text> plainQuoted(const Text &text, const Text &key)
{
    const Text start = u"\"" + key + u"\":\"";
    for (auto at = text.find(start); at != Text::npos; at = text.find(start, at + 1)) {
        const auto first = at + start.size();
        const auto end = text.find(u'"', first);
        if (end != Text::npos && end > first) {
            return text.substr(first, end - first);
        }
    }
    return std::nullopt;
}

std::optional<Text> plainBare(const Text &text, const Text &key)
{
    const Text start = u"\"" + key + u"\":";
    for (auto at = text.find(start); at != Text::npos; at = text.find(start, at + 1)) {
        const auto first = at + start.size();
        const auto end = text.find_first_not_of(u"0123456789.", first);
        if (end != first && first < text.size()) {
            return text.substr(first, end == Text::npos ? end : end - first);
        }
    }
    return std::nullopt;
}

std::optional<Text> plainAmount(const Text &exchange, const Text &text, const Text &key)
{
    const auto bare = exchange == u"kucoin" ? plainBare(text, key) : std::nullopt;
    return bare ? bare : plainQuoted(text, key);
}

// What each exchange calls things, and what the panel calls them: the amount that is the headline first.
struct PlainRule
{
    Text exchange;
    Text headlineKey;
    Text otherKey;
    Text currencyKey;
    Text headlineLabel;
    Text otherPrefix;
};

const PlainRule plainRules[] = {
    {u"bybit", u"totalEquity", u"walletBalance", u"coin", u"Total equity", u"Wallet balance: "},
    {u"okx", u"availBal", u"cashBal", u"ccy", u"Available balance", u"Cash balance: "},
    {u"gate", u"available", u"total", u"currency", u"Available", u"Total: "},
    {u"bingx", u"availableMargin", u"equity", u"asset", u"Available margin", u"Equity: "},
    {u"kucoin", u"availableBalance", u"holdBalance", u"currency", u"Available balance", u"Held: "},
    {u"bitget", u"available", u"accountEquity", u"marginCoin", u"Available futures balance",
     u"Account equity: "},
};

ParsedBalanceView plainView(const Text &text, const Text &headline, const std::vector<Text> &details)
{
    ParsedBalanceView view;
    view.title = QStringLiteral("Balance");
    view.headline = QString::fromStdU16String(headline);
    for (const Text &line : details) {
        view.details.append(QString::fromStdU16String(line));
    }
    view.rawOutput = QString::fromStdU16String(text);
    return view;
}

ParsedBalanceView plainError(const Text &text)
{
    Text reason = plainQuoted(text, u"reason").value_or(u"Unknown error");
    for (char16_t &character : reason) {
        character = character == u'_' ? u' ' : character;
    }
    return plainView(text, u"Could not load balance", {reason});
}

std::optional<ParsedBalanceView> plainSummary(const Text &exchange, const Text &text)
{
    if (text.empty() || text == u"not loaded") {
        return std::nullopt;
    }
    if (contains(text, u"\"status\":\"error\"")) {
        return plainError(text);
    }
    for (const PlainRule &rule : plainRules) {
        const auto headline = plainAmount(exchange, text, rule.headlineKey);
        const auto other = plainAmount(exchange, text, rule.otherKey);
        const auto currency = plainQuoted(text, rule.currencyKey);
        if (rule.exchange == exchange && headline && other && currency) {
            return plainView(text, *headline + u" " + *currency,
                             {rule.headlineLabel, rule.otherPrefix + *other + u" " + *currency});
        }
    }
    return plainView(text, u"Balance loaded", {u"Raw response available in technical log"});
}

void checkBalance(QByteArrayView input)
{
    const FuzzedTexts texts(input);
    const QString exchange = texts[0];
    const QString answer = texts[1];
    demand(balanceSummary(exchange, answer)
               == plainSummary(exchange.toStdU16String(), answer.toStdU16String()),
           "the panel shows what the answer says");
}

const FuzzTarget balanceTarget("balance", checkBalance);

} // namespace
