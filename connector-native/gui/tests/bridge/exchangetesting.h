#pragma once

// What the tests of the exchanges' records share.

#include "viewmodeltesting.h"

[[nodiscard]] inline ExchangeCredentialDraft typedDraft()
{
    ExchangeCredentialDraft draft;
    draft.apiKey = u"typed key"_s;
    draft.apiSecret = u"typed secret"_s;
    draft.passphrase = u"typed phrase"_s;
    return draft;
}

inline void type(ConnectorViewModel &viewModel, const QString &exchangeId,
                 const ExchangeCredentialDraft &draft = typedDraft())
{
    viewModel.setSelectedExchangeId(exchangeId);
    viewModel.setSelectedApiKey(draft.apiKey);
    viewModel.setSelectedApiSecret(draft.apiSecret);
    viewModel.setSelectedPassphrase(draft.passphrase);
}

// All records but one are as at the start.
[[nodiscard]] inline bool onlyChanged(const ConnectorViewModel &viewModel, const QString &exchangeId)
{
    QHash<QString, ExchangeCredentialDraft> others = viewModel.exchangeDrafts();
    const ExchangeCredentialDraft changed = others.take(exchangeId);
    return changed != ExchangeCredentialDraft() && others.size() == exchangeCatalogue().size() - 1
        && others.values().count(ExchangeCredentialDraft()) == others.size();
}
