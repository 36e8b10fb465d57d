#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <qqmlregistration.h>

/// One supported exchange. The id is what the connector is called with and the key of the credential
/// drafts; the name is what the user reads.
struct ExchangeItem
{
    Q_GADGET
    QML_VALUE_TYPE(exchangeItem)
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(bool needsPassphrase MEMBER needsPassphrase)

public:
    QString id;
    QString name;
    /// The exchange's keys carry a third secret, which validation has to pass on.
    bool needsPassphrase = false;

    bool operator==(const ExchangeItem &other) const = default;
};

[[nodiscard]] size_t qHash(const ExchangeItem &item, size_t seed = 0) noexcept;

/// The exchanges in tab order; never empty and never changed. Safe from any thread.
[[nodiscard]] const QList<ExchangeItem> &exchangeCatalogue();

/// The first entry with that id, or the catalogue's first entry when there is none, so that a command
/// always has an exchange to name. Ids are compared case-sensitively. Safe from any thread.
[[nodiscard]] const ExchangeItem &exchangeOrFirst(const QString &id);
