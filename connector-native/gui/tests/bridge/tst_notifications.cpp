#include "support/testprogram.h"
#include "viewmodeltesting.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QSignalSpy>

#include <functional>
#include <memory>
#include <vector>

namespace {

using Operation = std::function<void(ConnectorViewModel &)>;

// Counts the notifications of every observable property at once, so that a superfluous one is seen too.
class Notifications
{
public:
    explicit Notifications(const ConnectorViewModel &viewModel)
    {
        const QMetaObject *const type = viewModel.metaObject();
        for (int i = type->methodOffset(); i < type->methodCount(); ++i) {
            if (type->method(i).methodType() == QMetaMethod::Signal && !isDerived(type->method(i).name())) {
                m_spies.push_back(std::make_unique<QSignalSpy>(&viewModel, type->method(i)));
            }
        }
    }

    // "bindToken 1", sorted; properties without a notification are left out.
    [[nodiscard]] QStringList counts() const
    {
        QStringList counts;
        for (const auto &spy : m_spies) {
            if (const QString name = QString::fromLatin1(spy->signal()); spy->count() > 0) {
                counts += name.chopped(QLatin1StringView("Changed()").size()) + u' '
                    + QString::number(spy->count());
            }
        }
        counts.sort();
        return counts;
    }

private:
    // Not stored properties: views of one exchange's record, with no fixed number of notifications, and what
    // comes before and after them.
    static bool isDerived(const QByteArray &name)
    {
        static const QByteArrayList derived{"selectedDraftChanged", "selectedBalanceChanged", "busyChanged",
                                            "aboutToBlock", "exchangeSelected"};
        return derived.contains(name);
    }

    std::vector<std::unique_ptr<QSignalSpy>> m_spies;
};

QStringList sorted(QStringList counts)
{
    counts.sort();
    return counts;
}

} // namespace

class TestNotifications : public QObject
{
    Q_OBJECT

private slots:
    void everyAssignmentNotifiesOnce_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QStringList>("counts");
        const auto row = [](const char *name, const Operation &operation, const QStringList &counts) {
            QTest::newRow(name) << operation << counts;
        };

        const QStringList refresh{
            u"logs 4"_s,         u"lastStatusOutput 2"_s, u"connectorStatus 2"_s, u"lastServerOutput 1"_s,
            u"serverStatus 1"_s, u"lastBindingOutput 1"_s};
        const QStringList oneRecord{u"logs 1"_s, u"exchangeDrafts 1"_s};
        const QStringList update{u"logs 1"_s, u"lastUpdateOutput 1"_s};

        row("bind token", [](auto &model) { model.setBindToken(u"T"_s); }, {u"bindToken 1"_s});
        row("selection", [](auto &model) { model.setSelectedExchangeId(u"okx"_s); },
            {u"selectedExchangeId 1"_s});
        row("API key", [](auto &model) { model.setSelectedApiKey(u"K"_s); }, {u"exchangeDrafts 1"_s});
        row("API secret", [](auto &model) { model.setSelectedApiSecret(u"S"_s); }, {u"exchangeDrafts 1"_s});
        row("passphrase", [](auto &model) { model.setSelectedPassphrase(u"P"_s); }, {u"exchangeDrafts 1"_s});
        row("log disclosure", [](auto &model) { model.setLogsExpanded(true); }, {u"logsExpanded 1"_s});
        row("details disclosure", [](auto &model) { model.setTokenDetailsExpanded(true); },
            {u"tokenDetailsExpanded 1"_s});
        row("pressed button", [](auto &model) { model.setPressedButtonId(u"refresh"_s); },
            {u"pressedButtonId 1"_s});
        row(
            "refresh", [](auto &model) { model.refreshAll(); }, refresh + QStringList{u"bindingStatus 1"_s});
        row("server check", [](auto &model) { model.checkServer(); },
            {u"logs 1"_s, u"lastServerOutput 1"_s, u"serverStatus 1"_s});
        const auto claim = [](auto &model) {
            model.setBindToken(u"T"_s);
            model.claimToken();
        };
        row("claim", claim,
            {u"bindToken 1"_s, u"logs 2"_s, u"lastBindingOutput 1"_s, u"bindingStatus 1"_s,
             u"lastStatusOutput 1"_s, u"connectorStatus 1"_s});
        row(
            "unbind", [](auto &model) { model.disconnectBinding(); },
            QStringList{u"logs 5"_s, u"lastDisconnectOutput 1"_s, u"bindToken 1"_s, u"bindingStatus 2"_s}
                + refresh.sliced(1));
        row(
            "update check", [](auto &model) { model.checkUpdate(); }, update);
        row(
            "update download", [](auto &model) { model.downloadUpdate(); }, update);
        row(
            "update apply", [](auto &model) { model.applyUpdate(); }, update);
        row(
            "load", [](auto &model) { model.loadSelectedExchangeCredentials(); }, oneRecord);
        row("validate", [](auto &model) { model.validateSelectedExchange(); },
            {u"logs 2"_s, u"exchangeDrafts 2"_s});
        row(
            "delete", [](auto &model) { model.deleteSelectedExchangeCredentials(); }, oneRecord);
        row(
            "balance", [](auto &model) { model.loadBalance(); }, oneRecord);
    }

    // The second time, every value assigned is equal to the one that is there.
    void everyAssignmentNotifiesOnce()
    {
        QFETCH(Operation, operation);
        QFETCH(QStringList, counts);
        const FakeConnector connector;
        connector.answer(u"validate"_s, u"status=valid_read_only"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        for (int time = 0; time < 2; ++time) {
            const Notifications notifications(viewModel);
            operation(viewModel);
            QCOMPARE(notifications.counts(), sorted(counts));
        }
    }

    void failedRunsNotifyLikeOthers()
    {
        const QTemporaryDir home;
        ConnectorViewModel viewModel(placeWithoutConnector(home.path()), endlessPause);
        viewModel.setBindToken(u"T"_s);
        for (int time = 0; time < 2; ++time) {
            const Notifications notifications(viewModel);
            viewModel.claimToken();
            QCOMPARE(notifications.counts(),
                     QStringList({u"bindingStatus 1"_s, u"connectorStatus 1"_s, u"lastBindingOutput 1"_s,
                                  u"lastStatusOutput 1"_s, u"logs 2"_s}));
        }
    }

    void emptyClaimNotifiesNothing()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        const Notifications notifications(viewModel);
        viewModel.claimToken();
        QCOMPARE(notifications.counts(), QStringList());
    }

    void selectingTheSelectedTabNotifies()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        const QSignalSpy selected(&viewModel, &ConnectorViewModel::selectedExchangeIdChanged);
        viewModel.setSelectedExchangeId(u"bybit"_s);
        QCOMPARE(selected.count(), 1);
        QCOMPARE(viewModel.selectedExchangeId(), u"bybit"_s);
    }

    void readersSeeTheNewValue_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QVariant>("value");

        QTest::newRow("bindToken") << "bindToken"_ba << QVariant(u"T"_s);
        QTest::newRow("selectedExchangeId") << "selectedExchangeId"_ba << QVariant(u"okx"_s);
        QTest::newRow("selectedApiKey") << "selectedApiKey"_ba << QVariant(u"K"_s);
        QTest::newRow("selectedApiSecret") << "selectedApiSecret"_ba << QVariant(u"S"_s);
        QTest::newRow("selectedPassphrase") << "selectedPassphrase"_ba << QVariant(u"P"_s);
        QTest::newRow("logsExpanded") << "logsExpanded"_ba << QVariant(true);
        QTest::newRow("tokenDetailsExpanded") << "tokenDetailsExpanded"_ba << QVariant(true);
        QTest::newRow("pressedButtonId") << "pressedButtonId"_ba << QVariant(u"refresh"_s);
    }

    // Read from within the notification, as a binding does.
    void readersSeeTheNewValue()
    {
        QFETCH(QByteArray, property);
        QFETCH(QVariant, value);
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        const QMetaProperty meta =
            viewModel.metaObject()->property(viewModel.metaObject()->indexOfProperty(property.constData()));
        const QSignalSpy notified(&viewModel, meta.notifySignal());
        QVariant seen;
        const Operation read = [&](ConnectorViewModel &model) { seen = meta.read(&model); };
        for (const auto signal :
             {&ConnectorViewModel::bindTokenChanged, &ConnectorViewModel::selectedExchangeIdChanged,
              &ConnectorViewModel::selectedDraftChanged, &ConnectorViewModel::logsExpandedChanged,
              &ConnectorViewModel::tokenDetailsExpandedChanged,
              &ConnectorViewModel::pressedButtonIdChanged}) {
            connect(&viewModel, signal, this, [&] { read(viewModel); });
        }
        QVERIFY(meta.write(&viewModel, value));
        QCOMPARE(notified.count(), 1);
        QCOMPARE(seen, value);
    }

    void operationsBlockOnceHoweverManyRunsTheyTake_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<int>("times");
        const auto row = [](const char *name, const Operation &operation, int times) {
            QTest::newRow(name) << operation << times;
        };
        row(
            "refresh", [](auto &model) { model.refreshAll(); }, 1);
        row(
            "unbind", [](auto &model) { model.disconnectBinding(); }, 1);
        row(
            "validate", [](auto &model) { model.validateSelectedExchange(); }, 1);
        row(
            "empty claim", [](auto &model) { model.claimToken(); }, 0);
        row(
            "disclosure", [](auto &model) { model.setLogsExpanded(true); }, 0);
        row(
            "selection", [](auto &model) { model.setSelectedExchangeId(u"okx"_s); }, 0);
    }

    void operationsBlockOnceHoweverManyRunsTheyTake()
    {
        QFETCH(Operation, operation);
        QFETCH(int, times);
        const FakeConnector connector;
        connector.answer(u"validate"_s, u"status=valid_read_only"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        QStringList seen;
        connect(&viewModel, &ConnectorViewModel::busyChanged, this,
                [&] { seen += viewModel.isBusy() ? u"busy"_s : u"idle"_s; });
        connect(&viewModel, &ConnectorViewModel::aboutToBlock, this,
                [&] { seen += u"blocking after %1"_s.arg(viewModel.logs()->rowCount()); });
        operation(viewModel);
        QCOMPARE(seen,
                 times == 0 ? QStringList() : QStringList({u"busy"_s, u"blocking after 0"_s, u"idle"_s}));
        QVERIFY(!viewModel.isBusy());
    }

    void anotherSelectionIsAnnouncedAfterItsNotifications()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        QStringList seen;
        connect(&viewModel, &ConnectorViewModel::exchangeSelected, this, [&] { seen += u"selected"_s; });
        connect(&viewModel, &ConnectorViewModel::selectedExchangeIdChanged, this, [&] { seen += u"id"_s; });
        connect(&viewModel, &ConnectorViewModel::selectedDraftChanged, this, [&] { seen += u"draft"_s; });
        viewModel.setSelectedExchangeId(u"okx"_s);
        QCOMPARE(seen, QStringList({u"draft"_s, u"id"_s, u"selected"_s}));
        viewModel.setSelectedExchangeId(u"okx"_s);
        QCOMPARE(seen.count(u"selected"_s), 1);
    }

    void logEntryComesBeforeItsCompletion()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        QStringList seen;
        connect(&viewModel, &ConnectorViewModel::logsChanged, this,
                [&] { seen += u"logged "_s + viewModel.logs()->at(0).title; });
        connect(&viewModel, &ConnectorViewModel::lastServerOutputChanged, this, [&] { seen += u"stored"_s; });
        connect(&viewModel, &ConnectorViewModel::serverStatusChanged, this, [&] { seen += u"judged"_s; });
        viewModel.checkServer();
        QCOMPARE(seen, QStringList({u"logged server-health"_s, u"stored"_s, u"judged"_s}));
    }
};

static const TestClass<TestNotifications> testNotifications("tst_notifications");

#include "tst_notifications.moc"
