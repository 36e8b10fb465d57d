#pragma once

#include "bridge/commandlog.h"
#include "bridge/connectorpath.h"
#include "bridge/statuspolltask.h"
#include "bridge/statusrules.h"
#include "exchanges/balancesummary.h"
#include "exchanges/exchangecatalogue.h"
#include "exchanges/exchangecredentialdraft.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <qqmlregistration.h>

#include <chrono>
#include <functional>
#include <optional>

/// The one state object of the application: everything the window shows is a property of it, everything a
/// button does is one of its operations. Main thread only; an operation that runs the connector returns
/// after the connector has ended. Nothing throws or reports an error: what went wrong is text in the log
/// and a word in a property. Every assignment notifies, also that of an equal value.
class ConnectorViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString bindToken READ bindToken WRITE setBindToken NOTIFY bindTokenChanged)
    Q_PROPERTY(bool tokenDetailsExpanded READ tokenDetailsExpanded WRITE setTokenDetailsExpanded NOTIFY
                   tokenDetailsExpandedChanged)
    Q_PROPERTY(CommandLog *logs READ logs NOTIFY logsChanged)
    Q_PROPERTY(bool logsExpanded READ logsExpanded WRITE setLogsExpanded NOTIFY logsExpandedChanged)
    Q_PROPERTY(
        QString pressedButtonId READ pressedButtonId WRITE setPressedButtonId NOTIFY pressedButtonIdChanged)
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged)

    Q_PROPERTY(QString connectorStatus READ connectorStatus NOTIFY connectorStatusChanged)
    Q_PROPERTY(bool connectorGood READ isConnectorGood NOTIFY connectorStatusChanged)
    Q_PROPERTY(QString serverStatus READ serverStatus NOTIFY serverStatusChanged)
    Q_PROPERTY(bool serverGood READ isServerGood NOTIFY serverStatusChanged)
    Q_PROPERTY(QString bindingStatus READ bindingStatus NOTIFY bindingStatusChanged)
    Q_PROPERTY(bool bindingGood READ isBindingGood NOTIFY bindingStatusChanged)
    Q_PROPERTY(QString lastStatusOutput READ lastStatusOutput NOTIFY lastStatusOutputChanged)
    Q_PROPERTY(QString lastServerOutput READ lastServerOutput NOTIFY lastServerOutputChanged)
    Q_PROPERTY(QString lastBindingOutput READ lastBindingOutput NOTIFY lastBindingOutputChanged)
    Q_PROPERTY(QString lastDisconnectOutput READ lastDisconnectOutput NOTIFY lastDisconnectOutputChanged)

    Q_PROPERTY(QString lastUpdateOutput READ lastUpdateOutput NOTIFY lastUpdateOutputChanged)

    Q_PROPERTY(QList<ExchangeItem> exchanges READ exchanges CONSTANT)
    Q_PROPERTY(QString selectedExchangeId READ selectedExchangeId WRITE setSelectedExchangeId NOTIFY
                   selectedExchangeIdChanged)
    Q_PROPERTY(ExchangeItem selectedExchange READ selectedExchange NOTIFY selectedExchangeIdChanged)
    Q_PROPERTY(ExchangeCredentialDraft selectedDraft READ selectedDraft NOTIFY selectedDraftChanged)
    Q_PROPERTY(QString selectedApiKey READ selectedApiKey WRITE setSelectedApiKey NOTIFY selectedDraftChanged)
    Q_PROPERTY(QString selectedApiSecret READ selectedApiSecret WRITE setSelectedApiSecret NOTIFY
                   selectedDraftChanged)
    Q_PROPERTY(QString selectedPassphrase READ selectedPassphrase WRITE setSelectedPassphrase NOTIFY
                   selectedDraftChanged)
    Q_PROPERTY(bool hasSelectedBalance READ hasSelectedBalance NOTIFY selectedBalanceChanged)
    Q_PROPERTY(ParsedBalanceView selectedBalance READ selectedBalance NOTIFY selectedBalanceChanged)

public:
    explicit ConnectorViewModel(QObject *parent = nullptr);

    /// As above, looking for the connector from another place and pausing otherwise between two rounds.
    ConnectorViewModel(ProgramPlace place, std::chrono::milliseconds pollPause, QObject *parent = nullptr);

    // What the window shows beside the connector's answers

    [[nodiscard]] QString bindToken() const { return m_bindToken; }
    void setBindToken(const QString &token);
    [[nodiscard]] bool tokenDetailsExpanded() const { return m_tokenDetailsExpanded; }
    void setTokenDetailsExpanded(bool expanded);
    [[nodiscard]] CommandLog *logs() { return &m_logs; }
    [[nodiscard]] bool logsExpanded() const { return m_logsExpanded; }
    void setLogsExpanded(bool expanded);
    /// The button that looks pressed; empty when none does.
    [[nodiscard]] QString pressedButtonId() const { return m_pressedButtonId; }
    void setPressedButtonId(const QString &buttonId);
    /// Within an operation that runs the connector.
    [[nodiscard]] bool isBusy() const { return m_runningOperations > 0; }

    // Status, binding and polling

    [[nodiscard]] QString connectorStatus() const { return m_connectorStatus.word; }
    [[nodiscard]] bool isConnectorGood() const { return m_connectorStatus.good; }
    [[nodiscard]] QString serverStatus() const { return m_serverStatus.word; }
    [[nodiscard]] bool isServerGood() const { return m_serverStatus.good; }
    [[nodiscard]] QString bindingStatus() const { return m_bindingStatus.word; }
    [[nodiscard]] bool isBindingGood() const { return m_bindingStatus.good; }
    [[nodiscard]] QString lastStatusOutput() const { return m_lastStatusOutput; }
    [[nodiscard]] QString lastServerOutput() const { return m_lastServerOutput; }
    [[nodiscard]] QString lastBindingOutput() const { return m_lastBindingOutput; }
    [[nodiscard]] QString lastDisconnectOutput() const { return m_lastDisconnectOutput; }
    Q_INVOKABLE void refreshAll();
    Q_INVOKABLE void checkServer();
    [[nodiscard]] bool isPolling() const { return !m_statusPollTask.isNull(); }
    Q_INVOKABLE void startStatusPolling();
    Q_INVOKABLE void stopStatusPolling();
    Q_INVOKABLE void claimToken();
    Q_INVOKABLE void disconnectBinding();

    // Updates

    [[nodiscard]] QString lastUpdateOutput() const { return m_lastUpdateOutput; }
    Q_INVOKABLE void checkUpdate();
    Q_INVOKABLE void downloadUpdate();
    Q_INVOKABLE void applyUpdate();

    // Exchange credentials and balances

    [[nodiscard]] QList<ExchangeItem> exchanges() const { return exchangeCatalogue(); }
    [[nodiscard]] QString selectedExchangeId() const { return m_selectedExchangeId; }
    void setSelectedExchangeId(const QString &exchangeId);
    [[nodiscard]] ExchangeItem selectedExchange() const { return exchangeOrFirst(m_selectedExchangeId); }
    [[nodiscard]] QHash<QString, ExchangeCredentialDraft> exchangeDrafts() const { return m_exchangeDrafts; }
    [[nodiscard]] ExchangeCredentialDraft selectedDraft() const { return draft(m_selectedExchangeId); }
    [[nodiscard]] QString selectedApiKey() const { return selectedDraft().apiKey; }
    void setSelectedApiKey(const QString &apiKey);
    [[nodiscard]] QString selectedApiSecret() const { return selectedDraft().apiSecret; }
    void setSelectedApiSecret(const QString &apiSecret);
    [[nodiscard]] QString selectedPassphrase() const { return selectedDraft().passphrase; }
    void setSelectedPassphrase(const QString &passphrase);
    /// What the balance panel shows for an exchange; absent while nothing has been loaded.
    [[nodiscard]] std::optional<ParsedBalanceView> balanceSummary(const QString &exchangeId) const;
    [[nodiscard]] bool hasSelectedBalance() const { return m_selectedBalance.has_value(); }
    [[nodiscard]] ParsedBalanceView selectedBalance() const
    {
        return m_selectedBalance.value_or(ParsedBalanceView());
    }
    Q_INVOKABLE void loadSelectedExchangeCredentials();
    Q_INVOKABLE void validateSelectedExchange();
    Q_INVOKABLE void deleteSelectedExchangeCredentials();
    Q_INVOKABLE void loadBalance() { loadBalance(std::nullopt, std::nullopt); }
    /// Without an id the selected exchange's; without a title the selected exchange's name, whatever the id.
    void loadBalance(const std::optional<QString> &exchangeId, const std::optional<QString> &title);

signals:
    void bindTokenChanged();
    void tokenDetailsExpandedChanged();
    void logsChanged();
    void logsExpandedChanged();
    void pressedButtonIdChanged();
    void busyChanged();
    /// The thread is about to wait for the connector; every notification of what led to it has been sent.
    void aboutToBlock();

    void connectorStatusChanged();
    void serverStatusChanged();
    void bindingStatusChanged();
    void lastStatusOutputChanged();
    void lastServerOutputChanged();
    void lastBindingOutputChanged();
    void lastDisconnectOutputChanged();

    void lastUpdateOutputChanged();

    void selectedExchangeIdChanged();
    /// Another exchange is selected than before; every notification of it has been sent.
    void exchangeSelected();
    void exchangeDraftsChanged();
    void selectedDraftChanged();
    void selectedBalanceChanged();

private:
    class BusyScope;
    using Completion = std::function<void(const QString &output)>;

    template <typename Value>
    void assign(Value &property, const Value &value, void (ConnectorViewModel::*changed)())
    {
        property = value;
        emit(this->*changed)();
    }

    /// Runs the connector once, logs what it printed or why it could not be started, and hands that to store.
    void run(const QString &title, const QStringList &arguments, const Completion &store = {});

    void refreshConnectorStatus();
    void checkBindingStatus();

    void runUpdate(const QString &command);

    [[nodiscard]] ExchangeCredentialDraft draft(const QString &exchangeId) const;
    void storeDraft(const QString &exchangeId, const ExchangeCredentialDraft &draft);
    void refreshSelectedBalance();

    const ProgramPlace m_place;
    const std::chrono::milliseconds m_pollPause;

    QString m_bindToken;
    bool m_tokenDetailsExpanded = false;
    CommandLog m_logs;
    bool m_logsExpanded = false;
    QString m_pressedButtonId;
    int m_runningOperations = 0;

    StatusWord m_connectorStatus;
    StatusWord m_serverStatus;
    StatusWord m_bindingStatus;
    QString m_lastStatusOutput;
    QString m_lastServerOutput;
    QString m_lastBindingOutput;
    QString m_lastDisconnectOutput;
    QPointer<StatusPollTask> m_statusPollTask;

    QString m_lastUpdateOutput;

    QString m_selectedExchangeId;
    QHash<QString, ExchangeCredentialDraft> m_exchangeDrafts;
    std::optional<ParsedBalanceView> m_selectedBalance;
};
