#include "exchanges/balancesummary.h"

#include <QLatin1StringView>
#include <QList>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Alternatives for one value, each searched over the whole text before the next.
using Patterns = QList<QRegularExpression>;

// In both forms the repeated class excludes what follows it, or nothing follows. So a match never backtracks,
// and a search takes linear time.
QRegularExpression quoted(QLatin1StringView key)
{
    return QRegularExpression(uR"re("%1":"([^"]+)")re"_s.arg(key));
}

QRegularExpression bare(QLatin1StringView key)
{
    return QRegularExpression(uR"re("%1":([0-9.]+))re"_s.arg(key));
}

enum class Headline { FirstAmount, SecondAmount };

struct BalanceRule
{
    QString exchangeId;
    Patterns firstAmount;
    Patterns secondAmount;
    Patterns currency;
    Headline headline;
    QString headlineLabel;
    /// The label of the amount below the headline.
    QString otherPrefix;
};

// The exchanges' answers have little in common, so the rows are not meant to look alike: only one exchange
// writes amounts as bare numbers, and some answers name the total before the free amount.
const QList<BalanceRule> &balanceRules()
{
    static const QList<BalanceRule> rules{
        {u"bybit"_s,
         {quoted("totalEquity"_L1)},
         {quoted("walletBalance"_L1)},
         {quoted("coin"_L1)},
         Headline::FirstAmount,
         u"Total equity"_s,
         u"Wallet balance: "_s},
        {u"okx"_s,
         {quoted("availBal"_L1)},
         {quoted("cashBal"_L1)},
         {quoted("ccy"_L1)},
         Headline::FirstAmount,
         u"Available balance"_s,
         u"Cash balance: "_s},
        {u"gate"_s,
         {quoted("total"_L1)},
         {quoted("available"_L1)},
         {quoted("currency"_L1)},
         Headline::SecondAmount,
         u"Available"_s,
         u"Total: "_s},
        {u"bingx"_s,
         {quoted("equity"_L1)},
         {quoted("availableMargin"_L1)},
         {quoted("asset"_L1)},
         Headline::SecondAmount,
         u"Available margin"_s,
         u"Equity: "_s},
        {u"kucoin"_s,
         {bare("availableBalance"_L1), quoted("availableBalance"_L1)},
         {bare("holdBalance"_L1), quoted("holdBalance"_L1)},
         {quoted("currency"_L1)},
         Headline::FirstAmount,
         u"Available balance"_s,
         u"Held: "_s},
        {u"bitget"_s,
         {quoted("available"_L1)},
         {quoted("accountEquity"_L1)},
         {quoted("marginCoin"_L1)},
         Headline::FirstAmount,
         u"Available futures balance"_s,
         u"Account equity: "_s},
    };
    return rules;
}

// In a text that is not valid UTF-16 nothing is found.
std::optional<QString> firstCapture(const QRegularExpression &pattern, const QString &text)
{
    const QRegularExpressionMatch match = pattern.match(text);
    return match.hasMatch() ? std::optional(match.captured(1)) : std::nullopt;
}

std::optional<QString> firstCapture(const Patterns &alternatives, const QString &text)
{
    for (const QRegularExpression &pattern : alternatives) {
        if (std::optional<QString> value = firstCapture(pattern, text)) {
            return value;
        }
    }
    return std::nullopt;
}

ParsedBalanceView view(const QString &headline, const QStringList &details, const QString &text)
{
    return {.title = u"Balance"_s, .headline = headline, .details = details, .rawOutput = text};
}

ParsedBalanceView errorView(const QString &text)
{
    static const QRegularExpression reasonPattern = quoted("reason"_L1);
    QString reason = firstCapture(reasonPattern, text).value_or(u"Unknown error"_s);
    return view(u"Could not load balance"_s, {reason.replace(u'_', u' ')}, text);
}

ParsedBalanceView unreadView(const QString &text)
{
    return view(u"Balance loaded"_s, {u"Raw response available in technical log"_s}, text);
}

std::optional<ParsedBalanceView> ruleView(const BalanceRule &rule, const QString &text)
{
    const std::optional<QString> first = firstCapture(rule.firstAmount, text);
    const std::optional<QString> second = first ? firstCapture(rule.secondAmount, text) : std::nullopt;
    const std::optional<QString> currency = second ? firstCapture(rule.currency, text) : std::nullopt;
    if (!currency) {
        return std::nullopt;
    }
    const QString firstLine = *first + u' ' + *currency;
    const QString secondLine = *second + u' ' + *currency;
    return rule.headline == Headline::FirstAmount
        ? view(firstLine, {rule.headlineLabel, rule.otherPrefix + secondLine}, text)
        : view(secondLine, {rule.headlineLabel, rule.otherPrefix + firstLine}, text);
}

std::optional<ParsedBalanceView> exchangeView(const QString &exchangeId, const QString &text)
{
    const QList<BalanceRule> &rules = balanceRules();
    const auto rule = std::ranges::find(rules, exchangeId, &BalanceRule::exchangeId);
    return rule == rules.end() ? std::nullopt : ruleView(*rule, text);
}

} // namespace

std::optional<ParsedBalanceView> balanceSummary(const QString &exchangeId, const QString &balance)
{
    if (balance.isEmpty() || balance == "not loaded"_L1) {
        return std::nullopt;
    }
    if (balance.contains(uR"("status":"error")"_s)) {
        return errorView(balance);
    }
    return exchangeView(exchangeId, balance).value_or(unreadView(balance));
}
