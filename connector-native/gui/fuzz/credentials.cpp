#include "exchanges/credentialrules.h"

#include "exchanges/keyvaluelines.h"
#include "fuzzing.h"

namespace {

ExchangeCredentialDraft fuzzedDraft(const FuzzedTexts &texts)
{
    ExchangeCredentialDraft draft;
    draft.apiKey = texts[2];
    draft.apiSecret = texts[3];
    draft.passphrase = texts[4];
    draft.status = texts[5];
    draft.balance = texts[6];
    draft.validationOutput = texts[7];
    draft.loadedFromVault = texts[8].isEmpty();
    return draft;
}

ExchangeCredentialDraft plainLoad(const ExchangeCredentialDraft &before, const QString &output)
{
    if (!contains(output.toStdU16String(), u"status=ok")) {
        return before.loadedFromVault ? before : ExchangeCredentialDraft();
    }
    ExchangeCredentialDraft after = before;
    if (const auto key = extractValue(output, QStringLiteral("api_key"))) {
        after.apiKey = *key;
    }
    if (const auto secret = extractValue(output, QStringLiteral("api_secret"))) {
        after.apiSecret = *secret;
    }
    if (const auto passphrase = extractValue(output, QStringLiteral("passphrase"))) {
        after.passphrase = *passphrase;
    }
    after.loadedFromVault = true;
    return after;
}

std::u16string plainStatus(const std::u16string &text)
{
    if (contains(text, u"status=valid_trade_ready") || contains(text, u"status=valid_read_only")) {
        return u"valid";
    }
    if (contains(text, u"status=configured")) {
        return u"adapter exists, live validation pending";
    }
    if (contains(text, u"status=invalid")) {
        return u"invalid";
    }
    return contains(text, u"status=error") ? u"error" : u"unknown";
}

ExchangeCredentialDraft plainValidation(const ExchangeCredentialDraft &before, const QString &output)
{
    const std::u16string text = output.toStdU16String();
    ExchangeCredentialDraft after = before;
    after.status = QString::fromStdU16String(plainStatus(text));
    after.valid = plainStatus(text) == u"valid";
    after.validationOutput = output;
    after.loadedFromVault =
        plainStatus(text) == u"valid" ? contains(text, u"credentials_saved=true") : before.loadedFromVault;
    return after;
}

QStringList plainArguments(const ExchangeItem &exchange, const ExchangeCredentialDraft &draft)
{
    const QStringList four{QStringLiteral("validate"), exchange.id, draft.apiKey, draft.apiSecret};
    const bool isNamed = exchange.id == QLatin1String("okx") || exchange.id == QLatin1String("kucoin")
        || exchange.id == QLatin1String("bitget");
    return isNamed && !draft.passphrase.isEmpty() ? four + QStringList{draft.passphrase} : four;
}

void checkCredentials(QByteArrayView input)
{
    const FuzzedTexts texts(input);
    const QString output = texts[0];
    const ExchangeItem exchange = exchangeOrFirst(texts[1]);
    const ExchangeCredentialDraft draft = fuzzedDraft(texts);

    ExchangeCredentialDraft balanced = draft;
    balanced.balance = output;
    demand(afterLoad(draft, output) == plainLoad(draft, output), "what a load changes");
    demand(afterValidation(draft, output) == plainValidation(draft, output), "what a validation changes");
    demand(afterBalance(draft, output) == balanced, "a balance changes nothing else");
    demand(validateArguments(exchange, draft) == plainArguments(exchange, draft), "what is validated");
}

const FuzzTarget credentialsTarget("credentials", checkCredentials);

} // namespace
