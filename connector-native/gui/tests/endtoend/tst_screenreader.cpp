#include "screenreader.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace {

const auto clipboard = u"the clipboard"_s;

/// What somebody does, and what the screen reader says to it.
struct Step
{
    QString action;
    QStringList heard;
};

/// The steps of a journey: an action behind "> ", and below it the lines that are heard.
QList<Step> readJourney(const QString &path)
{
    QList<Step> steps;
    QFile file(path);
    static_cast<void>(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        if (line.startsWith(u"> "_s)) {
            steps.append({line.mid(2), {}});
        } else if (!line.startsWith(u'#') && !steps.isEmpty()) {
            steps.last().heard.append(line);
        }
    }
    return steps;
}

} // namespace

/// A trader's day by keyboard and ear alone.
class TestScreenReader : public ActiveWindowTest
{
    Q_OBJECT

    // There for longer than the program, which waits for its answer to each key.
    std::optional<ScreenReader> m_reader;

    void take(const QString &action)
    {
        if (action == u"start"_s) {
            start();
        } else if (action.startsWith(u"type "_s)) {
            desktop::type(action.section(u' ', 1));
        } else if (action != u"wait"_s && action != clipboard) {
            desktop::press(action);
        }
    }

    [[nodiscard]] QStringList outcome(const QString &action) const
    {
        return action == clipboard ? QString::fromUtf8(desktop::clipboard()).split(u'\n', Qt::SkipEmptyParts)
                                   : m_reader->heard();
    }

private slots:
    void init() override { renew(); }
    void cleanupTestCase() { m_reader.reset(); }

    void theJourneyIsHeard()
    {
        constexpr int patience = 30000;
        const QList<Step> journey = readJourney(QStringLiteral(SPOKEN_JOURNEY));
        QVERIFY(!journey.isEmpty());
        QVERIFY(application().setFaults("PENDING_CHECKS=1\n"));
        m_reader.emplace();
        for (const Step &step : journey) {
            // Orca says "entire document selected" only if Ctrl is still held when it hears of the selection,
            // so a modifier is held until its effect is heard.
            std::optional<desktop::HeldKey> modifier;
            if (step.action.contains(u'+'))
                modifier.emplace(step.action.section(u'+', 0, 0));
            take(step.action.section(u'+', -1));
            if (QTest::currentTestFailed())
                return;
            static_cast<void>(QTest::qWaitFor([&] { return outcome(step.action) == step.heard; }, patience));
            const QString wanted = u"> "_s + step.action + u'\n' + step.heard.join(u'\n');
            const QString heard = u"> "_s + step.action + u'\n' + outcome(step.action).join(u'\n');
            QCOMPARE(heard, wanted);
            m_reader->forget();
        }
    }
};

static const TestClass<TestScreenReader> testScreenReader("tst_screenreader");

#include "tst_screenreader.moc"
