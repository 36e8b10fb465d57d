#include "pollingtesting.h"
#include "support/testprogram.h"

namespace {

using Operation = void (ConnectorViewModel::*)();

// What each notification is about, and what its receiver sees of the binding.
class Steps
{
public:
    explicit Steps(ConnectorViewModel &viewModel)
        : m_viewModel(viewModel)
    {
        using Model = ConnectorViewModel;
        QObject::connect(&viewModel, &Model::logsChanged, &m_context,
                         [this] { add(m_viewModel.logs()->at(0).title + u" logged"_s); });
        const std::pair<void (Model::*)(), QString> others[] = {
            {&Model::lastBindingOutputChanged, u"output"_s},
            {&Model::lastDisconnectOutputChanged, u"output"_s},
            {&Model::bindingStatusChanged, u"word"_s},
            {&Model::bindTokenChanged, u"token"_s},
            {&Model::connectorStatusChanged, u"connector"_s},
            {&Model::serverStatusChanged, u"server"_s},
        };
        for (const auto &[signal, name] : others) {
            QObject::connect(&viewModel, signal, &m_context, [this, name = name] { add(name); });
        }
    }

    [[nodiscard]] QStringList all() const { return m_all; }

private:
    void add(const QString &what)
    {
        m_all += QStringList{what, m_viewModel.bindingStatus(), m_viewModel.bindToken(),
                             m_viewModel.isPolling() ? u"polling"_s : u"idle"_s}
                     .join(u", "_s);
    }

    ConnectorViewModel &m_viewModel;
    QObject m_context;
    QStringList m_all;
};

} // namespace

// The completion of a command takes its steps in one order, which its notifications show.
class TestCommandSteps : public QObject
{
    Q_OBJECT

private slots:
    void stepsComeInOneOrder_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<bool>("pollsBefore");
        QTest::addColumn<QString>("bindStatus");
        QTest::addColumn<QStringList>("steps");

        const Operation claim = &ConnectorViewModel::claimToken;
        QTest::newRow("a claim starts polling between its word and the status")
            << claim << false << authorized
            << QStringList{u"claim-token logged, not bound, T, idle"_s, u"output, not bound, T, idle"_s,
                           u"word, claimed, T, idle"_s, u"status logged, claimed, T, polling"_s,
                           u"connector, claimed, T, polling"_s};

        const Operation unbind = &ConnectorViewModel::disconnectBinding;
        QTest::newRow("an unbinding empties the token before it stops polling")
            << unbind << true << authorized
            << QStringList{u"disconnect-binding logged, not bound, T, polling"_s,
                           u"output, not bound, T, polling"_s,
                           u"word, not bound, T, polling"_s,
                           u"token, not bound, , polling"_s,
                           u"status logged, not bound, , idle"_s,
                           u"connector, not bound, , idle"_s,
                           u"server-health logged, not bound, , idle"_s,
                           u"server, not bound, , idle"_s,
                           u"bind-status logged, not bound, , idle"_s,
                           u"output, not bound, , idle"_s,
                           u"word, authorized, , idle"_s,
                           u"status logged, authorized, , idle"_s,
                           u"connector, authorized, , idle"_s};

        const Operation refresh = &ConnectorViewModel::refreshAll;
        const auto refreshed = [](const QString &before, const QString &word, const QString &after) {
            const QString unchanged = u"not bound, T, "_s + before;
            return QStringList{
                u"status logged, "_s + unchanged,         u"connector, "_s + unchanged,
                u"server-health logged, "_s + unchanged,  u"server, "_s + unchanged,
                u"bind-status logged, "_s + unchanged,    u"output, "_s + unchanged,
                u"word, %1, T, "_s.arg(word) + before,    u"status logged, %1, T, "_s.arg(word) + after,
                u"connector, %1, T, "_s.arg(word) + after};
        };
        QTest::newRow("a binding check starts polling between its word and the status")
            << refresh << false << pending << refreshed(u"idle"_s, u"pending signature"_s, u"polling"_s);
        QTest::newRow("a binding check stops polling between its word and the status")
            << refresh << true << authorized << refreshed(u"polling"_s, u"authorized"_s, u"idle"_s);
    }

    void stepsComeInOneOrder()
    {
        QFETCH(Operation, operation);
        QFETCH(bool, pollsBefore);
        QFETCH(QString, bindStatus);
        const FakeConnector connector;
        connector.answer(u"claim-token"_s, uR"({"status":"ok"})"_s);
        connector.answer(u"bind-status"_s, bindStatus);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        viewModel.setBindToken(u"T"_s);
        if (pollsBefore) {
            viewModel.startStatusPolling();
        }
        const Steps steps(viewModel);
        (viewModel.*operation)();
        QTEST(steps.all(), "steps");
    }
};

static const TestClass<TestCommandSteps> testCommandSteps("tst_commandsteps");

#include "tst_commandsteps.moc"
