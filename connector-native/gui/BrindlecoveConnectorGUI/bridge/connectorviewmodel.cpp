#include "bridge/connectorviewmodel.h"

#include "bridge/childprocess.h"
#include "bridge/utf8.h"
#include "exchanges/credentialrules.h"

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// Operations nest: busy lasts from the start of the outermost one to its end. The window shows that before
// the thread is blocked.
class ConnectorViewModel::BusyScope
{
public:
    explicit BusyScope(ConnectorViewModel &viewModel)
        : m_viewModel(viewModel)
    {
        if (++m_viewModel.m_runningOperations == 1) {
            emit m_viewModel.busyChanged();
            emit m_viewModel.aboutToBlock();
        }
    }
    ~BusyScope()
    {
        if (--m_viewModel.m_runningOperations == 0) {
            emit m_viewModel.busyChanged();
        }
    }
    Q_DISABLE_COPY_MOVE(BusyScope)

private:
    ConnectorViewModel &m_viewModel;
};

ConnectorViewModel::ConnectorViewModel(QObject *parent)
    : ConnectorViewModel(currentProgramPlace(), 3s, parent)
{
}

ConnectorViewModel::ConnectorViewModel(ProgramPlace place, std::chrono::milliseconds pollPause,
                                       QObject *parent)
    : QObject(parent)
    , m_place(std::move(place))
    , m_pollPause(pollPause)
    , m_connectorStatus{u"unknown"_s}
    , m_serverStatus{u"unknown"_s}
    , m_bindingStatus{u"not bound"_s}
    , m_selectedExchangeId(exchangeCatalogue().constFirst().id)
{
    for (const ExchangeItem &exchange : exchangeCatalogue()) {
        m_exchangeDrafts.insert(exchange.id, {});
    }
}

// What the window shows beside the connector's answers

void ConnectorViewModel::setBindToken(const QString &token)
{
    assign(m_bindToken, token, &ConnectorViewModel::bindTokenChanged);
}

void ConnectorViewModel::setTokenDetailsExpanded(bool expanded)
{
    assign(m_tokenDetailsExpanded, expanded, &ConnectorViewModel::tokenDetailsExpandedChanged);
}

void ConnectorViewModel::setLogsExpanded(bool expanded)
{
    assign(m_logsExpanded, expanded, &ConnectorViewModel::logsExpandedChanged);
}

void ConnectorViewModel::setPressedButtonId(const QString &buttonId)
{
    assign(m_pressedButtonId, buttonId, &ConnectorViewModel::pressedButtonIdChanged);
}

// Status, binding and polling

void ConnectorViewModel::refreshAll()
{
    const BusyScope busy(*this);
    refreshConnectorStatus();
    checkServer();
    checkBindingStatus();
}

void ConnectorViewModel::checkServer()
{
    run(u"server-health"_s, {u"server-health"_s}, [this](const QString &output) {
        assign(m_lastServerOutput, output, &ConnectorViewModel::lastServerOutputChanged);
        assign(m_serverStatus, serverWord(output), &ConnectorViewModel::serverStatusChanged);
    });
}

void ConnectorViewModel::startStatusPolling()
{
    if (!m_statusPollTask) {
        m_statusPollTask = new StatusPollTask(
            m_pollPause, [this] { refreshAll(); }, this);
    }
}

void ConnectorViewModel::stopStatusPolling()
{
    if (m_statusPollTask) {
        m_statusPollTask->cancel();
    }
    m_statusPollTask = nullptr;
}

void ConnectorViewModel::claimToken()
{
    if (m_bindToken.isEmpty()) {
        return;
    }
    run(u"claim-token"_s, {u"claim-token"_s, m_bindToken}, [this](const QString &output) {
        assign(m_lastBindingOutput, output, &ConnectorViewModel::lastBindingOutputChanged);
        assign(m_bindingStatus, claimWord(output), &ConnectorViewModel::bindingStatusChanged);
        // Also after a failed claim: the first round finds out and ends the polling.
        startStatusPolling();
        refreshConnectorStatus();
    });
}

void ConnectorViewModel::disconnectBinding()
{
    run(u"disconnect-binding"_s, {u"disconnect-binding"_s}, [this](const QString &output) {
        assign(m_lastDisconnectOutput, output, &ConnectorViewModel::lastDisconnectOutputChanged);
        // Whatever the connector answered, the window returns to the unbound state before it looks again.
        assign(m_bindingStatus, StatusWord{u"not bound"_s}, &ConnectorViewModel::bindingStatusChanged);
        setBindToken({});
        stopStatusPolling();
        refreshAll();
    });
}

// Updates

void ConnectorViewModel::checkUpdate()
{
    runUpdate(u"update-check"_s);
}

void ConnectorViewModel::downloadUpdate()
{
    runUpdate(u"update-download"_s);
}

void ConnectorViewModel::applyUpdate()
{
    runUpdate(u"update-apply"_s);
}

// Exchange credentials and balances

void ConnectorViewModel::setSelectedExchangeId(const QString &exchangeId)
{
    const QString before = std::exchange(m_selectedExchangeId, exchangeId);
    refreshSelectedBalance();
    emit selectedDraftChanged();
    emit selectedExchangeIdChanged();
    // After all notifications: a command that started in one of them would block before the later ones are
    // sent.
    if (exchangeId != before) {
        emit exchangeSelected();
    }
}

void ConnectorViewModel::setSelectedApiKey(const QString &apiKey)
{
    ExchangeCredentialDraft edited = selectedDraft();
    edited.apiKey = apiKey;
    storeDraft(m_selectedExchangeId, edited);
}

void ConnectorViewModel::setSelectedApiSecret(const QString &apiSecret)
{
    ExchangeCredentialDraft edited = selectedDraft();
    edited.apiSecret = apiSecret;
    storeDraft(m_selectedExchangeId, edited);
}

void ConnectorViewModel::setSelectedPassphrase(const QString &passphrase)
{
    ExchangeCredentialDraft edited = selectedDraft();
    edited.passphrase = passphrase;
    storeDraft(m_selectedExchangeId, edited);
}

std::optional<ParsedBalanceView> ConnectorViewModel::balanceSummary(const QString &exchangeId) const
{
    const auto stored = m_exchangeDrafts.constFind(exchangeId);
    if (stored == m_exchangeDrafts.cend()) {
        return std::nullopt;
    }
    return ::balanceSummary(exchangeId, stored->balance);
}

void ConnectorViewModel::loadSelectedExchangeCredentials()
{
    const ExchangeItem exchange = selectedExchange();
    run(u"load-credentials "_s + exchange.name, {u"load-credentials"_s, exchange.id},
        [this, exchange](const QString &output) {
            storeDraft(exchange.id, afterLoad(draft(exchange.id), output));
        });
}

void ConnectorViewModel::validateSelectedExchange()
{
    const ExchangeItem exchange = selectedExchange();
    run(u"validate "_s + exchange.name, validateArguments(exchange, selectedDraft()),
        [this, exchange](const QString &output) {
            const ExchangeCredentialDraft validated = afterValidation(draft(exchange.id), output);
            storeDraft(exchange.id, validated);
            if (validated.valid) {
                loadBalance(exchange.id, exchange.name);
            }
        });
}

void ConnectorViewModel::deleteSelectedExchangeCredentials()
{
    const ExchangeItem exchange = selectedExchange();
    run(u"delete-credentials "_s + exchange.name, {u"delete-credentials"_s, exchange.id},
        [this, exchange](const QString &) { storeDraft(exchange.id, afterDeletion()); });
}

void ConnectorViewModel::loadBalance(const std::optional<QString> &exchangeId,
                                     const std::optional<QString> &title)
{
    const ExchangeItem selected = selectedExchange();
    const QString id = exchangeId.value_or(selected.id);
    run(u"balance "_s + title.value_or(selected.name), {u"balance"_s, id},
        [this, id](const QString &output) { storeDraft(id, afterBalance(draft(id), output)); });
}

void ConnectorViewModel::run(const QString &title, const QStringList &arguments, const Completion &store)
{
    const BusyScope busy(*this);
    const ChildResult result = runChild(connectorPath(m_place), arguments);
    const QString text = result.launched() ? decodeUtf8(result.output)
                                           : u"failed to run connector: "_s + result.launchError
            + u"\nresolved_path="_s + decodeUtf8(connectorPath(m_place));
    m_logs.insertNewest(title, text);
    emit logsChanged();
    if (store) {
        store(text);
    }
}

void ConnectorViewModel::refreshConnectorStatus()
{
    run(u"status"_s, {u"status"_s}, [this](const QString &output) {
        assign(m_lastStatusOutput, output, &ConnectorViewModel::lastStatusOutputChanged);
        assign(m_connectorStatus, connectorWord(output), &ConnectorViewModel::connectorStatusChanged);
    });
}

void ConnectorViewModel::checkBindingStatus()
{
    run(u"bind-status"_s, {u"bind-status"_s}, [this](const QString &output) {
        const BindingVerdict verdict = bindingVerdict(output);
        assign(m_lastBindingOutput, output, &ConnectorViewModel::lastBindingOutputChanged);
        assign(m_bindingStatus, verdict.status, &ConnectorViewModel::bindingStatusChanged);
        verdict.polling == Polling::KeepGoing ? startStatusPolling() : stopStatusPolling();
        refreshConnectorStatus();
    });
}

void ConnectorViewModel::runUpdate(const QString &command)
{
    run(command, {command}, [this](const QString &output) {
        assign(m_lastUpdateOutput, output, &ConnectorViewModel::lastUpdateOutputChanged);
    });
}

ExchangeCredentialDraft ConnectorViewModel::draft(const QString &exchangeId) const
{
    return m_exchangeDrafts.value(exchangeId);
}

void ConnectorViewModel::storeDraft(const QString &exchangeId, const ExchangeCredentialDraft &draft)
{
    // Typing a key stores a record as well, which must not search a long balance answer again.
    const bool sameBalance = this->draft(exchangeId).balance == draft.balance;
    m_exchangeDrafts.insert(exchangeId, draft);
    emit exchangeDraftsChanged();
    if (!sameBalance) {
        refreshSelectedBalance();
    }
    emit selectedDraftChanged();
}

void ConnectorViewModel::refreshSelectedBalance()
{
    m_selectedBalance = balanceSummary(m_selectedExchangeId);
    emit selectedBalanceChanged();
}
