#include "instantconnector.h"
#include "pollingtesting.h"
#include "support/testprogram.h"

#include <array>

using namespace std::chrono_literals;

namespace {

// A window with a connector that answers at once, and what ought to have become of its polling. No pause is
// waited for: the clock is the number of turns of the event loop.
class PolledWindow
{
public:
    PolledWindow()
    {
        instantConnector() = [this](const QStringList &arguments) { return answer(arguments); };
    }
    ~PolledWindow() { instantConnector() = {}; }
    Q_DISABLE_COPY_MOVE(PolledWindow)

    void start()
    {
        m_viewModel.startStatusPolling();
        m_expected = true;
    }

    // The window disappears.
    void stop()
    {
        m_viewModel.stopStatusPolling();
        m_expected = false;
    }

    void appear()
    {
        m_viewModel.refreshAll();
        m_viewModel.startStatusPolling();
        ++m_expectedRounds;
        m_expected = true;
    }

    void claim()
    {
        m_viewModel.setBindToken(u"T"_s);
        m_viewModel.claimToken();
        m_expected = true;
    }

    void unbind()
    {
        m_viewModel.disconnectBinding();
        ++m_expectedRounds;
        m_expected = m_pending;
    }

    void signOrRevoke() { m_pending = !m_pending; }

    // Whether a round is due in this turn or the next is the event loop's business; whether one may run is
    // not. Objects are deleted last, so that a cancelled task meets whatever it had begun to wait for.
    void turn()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (m_expected && m_rounds == m_expectedRounds + 1) {
            ++m_expectedRounds;
            m_expected = m_pending;
        }
        m_surplusTasks = tasks(m_viewModel).size() - (m_expected ? 1 : 0);
    }

    // A round that is stopped goes on to its end, and may find out that there is something to wait for.
    void turnWithAStopInItsRound()
    {
        m_stopsInRound = true;
        turn();
        m_stopsInRound = false;
    }

    // What is wrong; nothing when all is as it ought to be.
    [[nodiscard]] const char *fault() const
    {
        return m_surplusTasks > 0                   ? "a task too many"
            : m_surplusTasks < 0                    ? "no task"
            : m_viewModel.isPolling() != m_expected ? "polling differs"
            : m_rounds > m_expectedRounds           ? "a round that nobody asked for"
            : m_rounds < m_expectedRounds           ? "no round"
                                                    : nullptr;
    }

    // After some turns: a task that is wanted has had its round, and one that is not has had none.
    [[nodiscard]] const char *lateFault()
    {
        constexpr int enough = 4;
        const bool wanted = m_expected;
        const int before = m_rounds;
        for (int turns = 0; turns < enough && m_rounds == before; ++turns) {
            turn();
        }
        return (m_rounds > before) != wanted ? "no round in spite of a task, or one without" : fault();
    }

private:
    QByteArray answer(const QStringList &arguments)
    {
        if (arguments.constFirst() == u"server-health"_s) {
            ++m_rounds;
            if (m_stopsInRound) {
                m_viewModel.stopStatusPolling();
            }
        }
        return m_pending ? "pending_signature" : "authorized";
    }

    bool m_pending = true;
    bool m_stopsInRound = false;
    int m_rounds = 0;
    int m_expectedRounds = 0;
    qsizetype m_surplusTasks = 0; ///< As of the last turn.
    bool m_expected = false;
    ConnectorViewModel m_viewModel{{Packaging::Directory, "/", "/", "/"}, 0ms};
};

struct Event
{
    const char *name;
    void (PolledWindow::*happen)();
};

constexpr std::array events{
    Event{"start", &PolledWindow::start},
    Event{"stop", &PolledWindow::stop},
    Event{"turn", &PolledWindow::turn},
    Event{"turn with a stop in its round", &PolledWindow::turnWithAStopInItsRound},
    Event{"appear", &PolledWindow::appear},
    Event{"claim", &PolledWindow::claim},
    Event{"unbind", &PolledWindow::unbind},
    Event{"sign or revoke", &PolledWindow::signOrRevoke},
};

} // namespace

// Whatever happens in whatever order: never two tasks, and after a stop no round but the one that is running.
class TestPollingOrders : public QObject
{
    Q_OBJECT

    // The events of an order are the digits of its number.
    static QByteArrayList follow(std::size_t number, std::size_t length)
    {
        QByteArrayList history;
        PolledWindow window;
        for (; length > 0; --length, number /= events.size()) {
            const Event &event = events.at(number % events.size());
            (window.*event.happen)();
            history.append(event.name);
            if (const char *fault = window.fault()) {
                return history + QByteArrayList{fault};
            }
        }
        const char *fault = window.lateFault();
        return fault ? history + QByteArrayList{"some turns", fault} : QByteArrayList();
    }

private slots:
    void everyOrderIsRight_data()
    {
        QTest::addColumn<std::size_t>("length");
        QTest::newRow("of five events") << std::size_t(5);
        QTest::newRow("of six events") << std::size_t(6);
    }

    void everyOrderIsRight()
    {
        QFETCH(std::size_t, length);
        std::size_t orders = 1;
        for (std::size_t i = 0; i < length; ++i) {
            orders *= events.size();
        }
        for (std::size_t number = 0; number < orders; ++number) {
            const QByteArrayList wrong = follow(number, length);
            QVERIFY2(wrong.isEmpty(), wrong.join(" > ").constData());
        }
    }
};

static const TestClass<TestPollingOrders> testPollingOrders("tst_pollingorders");

#include "tst_pollingorders.moc"
