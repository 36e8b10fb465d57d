#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <qqmlregistration.h>

#include <optional>

/// What the balance panel shows of an exchange's answer. Amounts are the exchange's own text, neither
/// parsed nor rounded.
struct ParsedBalanceView
{
    Q_GADGET
    QML_VALUE_TYPE(parsedBalanceView)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString headline MEMBER headline)
    Q_PROPERTY(QStringList details MEMBER details)
    Q_PROPERTY(QString rawOutput MEMBER rawOutput)

public:
    QString title;
    QString headline;
    QStringList details;
    /// The whole answer the other fields were read from.
    QString rawOutput;

    bool operator==(const ParsedBalanceView &other) const = default;
};

/// The summary of a balance answer, or nothing when no answer is there: the text is empty or says "not
/// loaded". An answer in which the exchange's fields are not found yields a summary that points to the
/// technical log. Takes time linear in the length of the answer. Safe from any thread.
[[nodiscard]] std::optional<ParsedBalanceView> balanceSummary(const QString &exchangeId,
                                                              const QString &balance);
