#pragma once

#include <QObject>
#include <QString>
#include <qqmlregistration.h>

/// What the window knows about one exchange's credentials. A record is copied, changed and stored back
/// whole; a default-constructed one is the state before anything was typed, loaded or asked.
struct ExchangeCredentialDraft
{
    Q_GADGET
    QML_VALUE_TYPE(exchangeCredentialDraft)
    Q_PROPERTY(QString apiKey MEMBER apiKey)
    Q_PROPERTY(QString apiSecret MEMBER apiSecret)
    Q_PROPERTY(QString passphrase MEMBER passphrase)
    Q_PROPERTY(QString status MEMBER status)
    Q_PROPERTY(QString balance MEMBER balance)
    Q_PROPERTY(QString validationOutput MEMBER validationOutput)
    Q_PROPERTY(bool loadedFromVault MEMBER loadedFromVault)
    Q_PROPERTY(bool valid MEMBER valid)

public:
    QString apiKey;
    QString apiSecret;
    /// Used only where the exchange needs one.
    QString passphrase;
    /// The last status word, shown to the user as it is.
    QString status = QStringLiteral("not checked");
    /// The last balance answer as it came, or the words for there being none.
    QString balance = QStringLiteral("not loaded");
    /// The last validation answer as it came, or a note that the credentials were deleted.
    QString validationOutput;
    /// The key fields hold what the connector has saved; later typing does not clear this.
    bool loadedFromVault = false;
    /// The last validation has accepted the keys; set together with the word that says so.
    bool valid = false;

    bool operator==(const ExchangeCredentialDraft &other) const = default;
};
