#include "credentialcommands.h"

#include "balances.h"
#include "statestore.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

    struct Credentials
    {
        std::string_view key;
        std::string_view secret;
        std::string_view passphrase;
    };

    struct Verdict
    {
        std::string_view keyPrefix;
        std::string_view status;
        std::string_view reason;
        bool isSaved = false;
    };

    /// The key decides; the last row takes every key that no other row does.
    constexpr std::array verdictsByKey = {
        Verdict{"trade-", "valid_trade_ready", {}, true},
        Verdict{"read-", "valid_read_only", {}, true},
        Verdict{"unsaved-", "valid_trade_ready", {}},
        Verdict{"configured-", "configured", "no_live_check_for_this_exchange"},
        Verdict{"error-", "error", "exchange_not_answering"},
        Verdict{"", "invalid", "invalid_api_key"},
    };

    [[nodiscard]] Verdict invalidBecauseOf(std::string_view reason)
    {
        return {{}, "invalid", reason};
    }

    [[nodiscard]] bool hasLineBreak(const Credentials &given)
    {
        const auto breaks = [](std::string_view text) {
            return text.find_first_of("\r\n") != std::string_view::npos;
        };
        return breaks(given.key) || breaks(given.secret) || breaks(given.passphrase);
    }

    [[nodiscard]] Verdict judge(const Exchange &exchange, const Credentials &given)
    {
        if (given.key.empty())
            return invalidBecauseOf("api_key_missing");
        if (given.secret.empty())
            return invalidBecauseOf("api_secret_missing");
        if (exchange.needsPassphrase && given.passphrase.empty())
            return invalidBecauseOf("passphrase_missing");
        // A saved line break would end the line that load-credentials prints.
        if (hasLineBreak(given))
            return invalidBecauseOf("line_break_in_credentials");
        return *std::ranges::find_if(verdictsByKey, [&given](const Verdict &verdict) {
            return given.key.starts_with(verdict.keyPrefix);
        });
    }

    [[nodiscard]] std::string vaultFile(const Exchange &exchange)
    {
        return std::string("vault/").append(exchange.id);
    }

    [[nodiscard]] bool save(const StateStore &store, const Exchange &exchange, const Credentials &given)
    {
        Fields fields = {{"api_key", std::string(given.key)}, {"api_secret", std::string(given.secret)}};
        if (!given.passphrase.empty())
            fields.emplace("passphrase", given.passphrase);
        return store.write(vaultFile(exchange), fields);
    }

    /// The saved fields; none when the vault holds no usable key and secret of the exchange.
    [[nodiscard]] Fields savedCredentials(const StateStore &store, const Exchange *exchange)
    {
        if (!exchange)
            return {};
        const Fields saved = store.read(vaultFile(*exchange));
        const bool isWhole = saved.contains("api_key") && saved.contains("api_secret");
        return isWhole ? saved : Fields();
    }

    [[nodiscard]] std::string line(std::string_view name, std::string_view value)
    {
        return value.empty() ? std::string() : std::string(name).append("=").append(value).append("\n");
    }

    [[nodiscard]] Answer validationAnswer(std::string_view exchange, const Verdict &verdict, bool isSaved)
    {
        const bool isGood = verdict.reason.empty();
        return {line("exchange", exchange) + line("status", verdict.status) + line("reason", verdict.reason)
                    + line("credentials_saved", isSaved ? "true" : "false"),
                {},
                isGood ? 0 : 1};
    }

    [[nodiscard]] Answer missing(std::string_view exchange)
    {
        return {line("exchange", exchange) + line("status", "missing"), {}, 1};
    }

} // namespace

Answer validate(const Call &call)
{
    const auto id = call.arguments[0];
    const Credentials given = {call.arguments[1], call.arguments[2],
                               call.arguments.size() > 3 ? call.arguments[3] : std::string_view()};
    const Exchange *exchange = exchangeWithId(id);
    if (!exchange)
        return validationAnswer(id, {{}, "error", "unknown_exchange"}, false);
    const Verdict verdict = judge(*exchange, given);
    return validationAnswer(id, verdict, verdict.isSaved && save(call.store, *exchange, given));
}

Answer loadCredentials(const Call &call)
{
    const auto id = call.arguments.front();
    const Fields saved = savedCredentials(call.store, exchangeWithId(id));
    if (saved.empty())
        return missing(id);
    std::string output = line("exchange", id) + line("status", "ok");
    for (const std::string_view name : {"api_key", "api_secret", "passphrase"})
        output += line(name, valueOf(saved, name).value_or(""));
    return {output, {}, 0};
}

Answer deleteCredentials(const Call &call)
{
    const auto id = call.arguments.front();
    const Exchange *exchange = exchangeWithId(id);
    if (!exchange || !call.store.remove(vaultFile(*exchange)))
        return missing(id);
    return {line("exchange", id) + line("status", "ok"), {}, 0};
}

Answer balance(const Call &call)
{
    const Exchange *exchange = exchangeWithId(call.arguments.front());
    if (savedCredentials(call.store, exchange).empty())
        return {"{\"status\":\"error\",\"reason\":\"credentials_not_found\"}\n", {}, 1};
    return {std::string(exchange->balance) + '\n', {}, 0};
}

} // namespace simulator
