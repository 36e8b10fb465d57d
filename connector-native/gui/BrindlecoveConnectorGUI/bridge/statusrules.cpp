#include "bridge/statusrules.h"

#include <algorithm>
#include <span>

using namespace Qt::StringLiterals;

namespace {

struct WordRule
{
    QLatin1StringView marker;
    QLatin1StringView word;
    bool good = false;
};

struct BindingRule
{
    QLatin1StringView marker;
    QLatin1StringView word;
    Polling polling = Polling::Stop;
    bool good = false;
};

// Every text contains the empty marker: the last row of each table is the default.
constexpr QLatin1StringView otherwise;

constexpr WordRule connectorRules[] = {
    {"connector_health=ready"_L1, "ready"_L1, true},
    {"connector_health=pairing_required"_L1, "pairing required"_L1},
    {otherwise, "starting"_L1},
};

constexpr WordRule serverRules[] = {
    {R"("reachable":true)"_L1, "reachable"_L1, true},
    {R"("reachable":false)"_L1, "unreachable"_L1},
    {otherwise, "unknown"_L1},
};

constexpr BindingRule bindingRules[] = {
    {R"("bindState":"authorized")"_L1, "authorized"_L1, Polling::Stop, true},
    {R"("pairingStatus":"bound")"_L1, "authorized"_L1, Polling::Stop, true},
    {"pending_signature"_L1, "pending signature"_L1, Polling::KeepGoing},
    {"token_waiting"_L1, "token waiting"_L1, Polling::Stop},
    // Two states of the connector that happen to share a word.
    {"session_missing"_L1, "not bound"_L1, Polling::Stop},
    {"unpaired"_L1, "not bound"_L1, Polling::Stop},
    {otherwise, "not bound"_L1, Polling::Stop},
};

constexpr WordRule claimRules[] = {
    {"pending_signature"_L1, "pending signature"_L1},
    {R"("status":"ok")"_L1, "claimed"_L1},
    {otherwise, "claim failed"_L1},
};

template <typename Rule> const Rule &firstMatch(std::span<const Rule> rules, const QString &output)
{
    const auto matches = [&output](const Rule &rule) { return output.contains(rule.marker); };
    return *std::ranges::find_if(rules, matches);
}

template <typename Rule> StatusWord statusWord(const Rule &rule)
{
    return {rule.word, rule.good};
}

} // namespace

StatusWord connectorWord(const QString &output)
{
    return statusWord(firstMatch<WordRule>(connectorRules, output));
}

StatusWord serverWord(const QString &output)
{
    return statusWord(firstMatch<WordRule>(serverRules, output));
}

BindingVerdict bindingVerdict(const QString &output)
{
    const BindingRule &rule = firstMatch<BindingRule>(bindingRules, output);
    return {statusWord(rule), rule.polling};
}

StatusWord claimWord(const QString &output)
{
    return statusWord(firstMatch<WordRule>(claimRules, output));
}
