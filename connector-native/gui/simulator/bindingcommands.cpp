#include "bindingcommands.h"

#include "settings.h"
#include "statestore.h"
#include "updatecommands.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

    constexpr std::string_view bindingFile = "binding";
    constexpr unsigned long long usualPendingChecks = 3;

    [[nodiscard]] Answer answerOf(std::string_view json, int exitCode = 0)
    {
        return {std::string(json) + '\n', {}, exitCode};
    }

    /// What bind-status prints for each remembered state; a state that is not listed counts as unpaired.
    struct BindingState
    {
        std::string_view name;
        std::string_view answer;
    };

    constexpr std::array bindingStates = {
        BindingState{"unpaired",
                     R"({"status":"ok","bindState":"session_missing","pairingStatus":"unpaired"})"},
        BindingState{"waiting", R"({"status":"ok","bindState":"token_waiting","pairingStatus":"open"})"},
        BindingState{"pending",
                     R"({"status":"ok","bindState":"pending_signature","pairingStatus":"claimed"})"},
        BindingState{"authorized", R"({"status":"ok","bindState":"authorized","pairingStatus":"bound"})"},
    };

    struct TokenRule
    {
        std::string_view prefix;
        std::string_view state;
        std::string_view answer;
    };

    /// The last row takes every token that no other row does.
    constexpr std::array tokenRules = {
        TokenRule{"bad", {}, R"({"status":"error","reason":"token_refused"})"},
        TokenRule{"waiting-", "waiting", R"({"status":"ok","next":"confirm_token"})"},
        TokenRule{"", "pending", R"({"status":"ok","next":"pending_signature"})"},
    };

    [[nodiscard]] const BindingState &stateNamed(std::string_view name)
    {
        const auto found = std::ranges::find(bindingStates, name, &BindingState::name);
        return found == bindingStates.end() ? bindingStates.front() : *found;
    }

    [[nodiscard]] const BindingState &currentState(const StateStore &store)
    {
        return stateNamed(valueOf(store.read(bindingFile), "state").value_or(""));
    }

    [[nodiscard]] bool saveState(const StateStore &store, std::string_view state, unsigned long long checks)
    {
        return store.write(bindingFile, {{"state", std::string(state)}, {"checks", std::to_string(checks)}});
    }

    /// The signature arrives after some checks, as if the user had given it in the browser meanwhile.
    [[nodiscard]] Answer checkPending(const Call &call, const BindingState &pending)
    {
        const auto made = parseNumber(valueOf(call.store.read(bindingFile), "checks").value_or(""));
        const auto wanted = call.settings.number("PENDING_CHECKS").value_or(usualPendingChecks);
        const auto done = made.value_or(0);
        const BindingState &now = done < wanted ? pending : stateNamed("authorized");
        return saveState(call.store, now.name, done + 1) ? answerOf(now.answer) : answerOf(pending.answer);
    }

    [[nodiscard]] bool isBlank(std::string_view text)
    {
        return text.find_first_not_of(" \t\n\v\f\r") == std::string_view::npos;
    }

    [[nodiscard]] const TokenRule &ruleFor(std::string_view token)
    {
        if (isBlank(token))
            return tokenRules.front();
        const auto found = std::ranges::find_if(
            tokenRules, [token](const TokenRule &rule) { return token.starts_with(rule.prefix); });
        return *found;
    }

} // namespace

Answer status(const Call &call)
{
    const bool isUnpaired = currentState(call.store).name == "unpaired";
    std::string output = "connector_name=brindlecove-connector (simulator)\n";
    output.append("connector_version=").append(installedVersion(call.store)).append("\n");
    output.append("connector_health=").append(isUnpaired ? "pairing_required" : "ready").append("\n");
    output.append("vault_path=").append(call.store.pathOf("vault")).append("\n");
    return {output, {}, 0};
}

Answer serverHealth(const Call &call)
{
    if (call.settings.text("SERVER") == "unreachable")
        return answerOf(R"({"reachable":false,"error":"connection_refused"})", 1);
    return answerOf(R"({"reachable":true,"latencyMs":18,"protocol":"v1"})");
}

Answer bindStatus(const Call &call)
{
    const BindingState &state = currentState(call.store);
    return state.name == "pending" ? checkPending(call, state) : answerOf(state.answer);
}

Answer claimToken(const Call &call)
{
    const TokenRule &rule = ruleFor(call.arguments.front());
    if (rule.state.empty())
        return answerOf(rule.answer, 1);
    if (!saveState(call.store, rule.state, 0))
        return answerOf(R"({"status":"error","reason":"state_not_writable"})", 1);
    return answerOf(rule.answer);
}

Answer disconnectBinding(const Call &call)
{
    const bool removed = call.store.remove(bindingFile);
    return answerOf(removed ? R"({"status":"ok","bindState":"unpaired","removed":true})"
                            : R"({"status":"ok","bindState":"unpaired","removed":false})");
}

} // namespace simulator
