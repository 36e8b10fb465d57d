#pragma once

#include "exchanges/exchangecatalogue.h"
#include "exchanges/exchangecredentialdraft.h"

#include <QString>
#include <QStringList>

// How an answer of the connector changes a credential record. Answers are judged by their text alone, so
// a failure is just a text without the expected markers. All functions are pure and safe from any thread.

/// After "load-credentials". Without a success marker, values that came from the vault survive while
/// values that were only typed are dropped.
[[nodiscard]] ExchangeCredentialDraft afterLoad(const ExchangeCredentialDraft &draft, const QString &output);

/// After "validate": a new status word, and whether the keys were accepted.
[[nodiscard]] ExchangeCredentialDraft afterValidation(const ExchangeCredentialDraft &draft,
                                                      const QString &output);

/// After "delete-credentials", whatever the connector answered.
[[nodiscard]] ExchangeCredentialDraft afterDeletion();

/// After "balance": the answer is kept as it came.
[[nodiscard]] ExchangeCredentialDraft afterBalance(const ExchangeCredentialDraft &draft,
                                                   const QString &output);

/// The connector's arguments for validating the record's keys: the fields as typed, empty ones included,
/// since judging them is the connector's business. They hold secrets and must not be logged.
[[nodiscard]] QStringList validateArguments(const ExchangeItem &exchange,
                                            const ExchangeCredentialDraft &draft);
