#include "exchanges/credentialrules.h"

#include "exchanges/keyvaluelines.h"

#include <QLatin1StringView>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct StatusRule
{
    QLatin1StringView marker;
    QLatin1StringView status;
    bool valid = false;
};

// The first row whose marker is found wins. Every text contains the empty marker of the last row.
constexpr std::array statusRules{
    StatusRule{"status=valid_trade_ready"_L1, "valid"_L1, true},
    StatusRule{"status=valid_read_only"_L1, "valid"_L1, true},
    StatusRule{"status=configured"_L1, "adapter exists, live validation pending"_L1},
    StatusRule{"status=invalid"_L1, "invalid"_L1},
    StatusRule{"status=error"_L1, "error"_L1},
    StatusRule{""_L1, "unknown"_L1},
};

struct VaultField
{
    QLatin1StringView key;
    QString ExchangeCredentialDraft::*field = nullptr;
};

constexpr std::array vaultFields{
    VaultField{"api_key"_L1, &ExchangeCredentialDraft::apiKey},
    VaultField{"api_secret"_L1, &ExchangeCredentialDraft::apiSecret},
    VaultField{"passphrase"_L1, &ExchangeCredentialDraft::passphrase},
};

const StatusRule &statusRuleFor(const QString &output)
{
    return *std::ranges::find_if(statusRules,
                                 [&](const StatusRule &rule) { return output.contains(rule.marker); });
}

ExchangeCredentialDraft withVaultValues(ExchangeCredentialDraft draft, const QString &output)
{
    for (const auto &[key, field] : vaultFields) {
        draft.*field = extractValue(output, key).value_or(draft.*field);
    }
    draft.loadedFromVault = true;
    return draft;
}

} // namespace

ExchangeCredentialDraft afterLoad(const ExchangeCredentialDraft &draft, const QString &output)
{
    if (output.contains("status=ok"_L1)) {
        return withVaultValues(draft, output);
    }
    return draft.loadedFromVault ? draft : ExchangeCredentialDraft{};
}

ExchangeCredentialDraft afterValidation(const ExchangeCredentialDraft &draft, const QString &output)
{
    const StatusRule &rule = statusRuleFor(output);
    ExchangeCredentialDraft next = draft;
    next.status = rule.status;
    next.valid = rule.valid;
    next.validationOutput = output;
    if (rule.valid) {
        next.loadedFromVault = output.contains("credentials_saved=true"_L1);
    }
    return next;
}

ExchangeCredentialDraft afterDeletion()
{
    ExchangeCredentialDraft next;
    next.status = u"not configured"_s;
    next.validationOutput = u"credentials deleted"_s;
    return next;
}

ExchangeCredentialDraft afterBalance(const ExchangeCredentialDraft &draft, const QString &output)
{
    ExchangeCredentialDraft next = draft;
    next.balance = output;
    return next;
}

QStringList validateArguments(const ExchangeItem &exchange, const ExchangeCredentialDraft &draft)
{
    QStringList arguments{u"validate"_s, exchange.id, draft.apiKey, draft.apiSecret};
    if (exchange.needsPassphrase && !draft.passphrase.isEmpty()) {
        arguments.append(draft.passphrase);
    }
    return arguments;
}
