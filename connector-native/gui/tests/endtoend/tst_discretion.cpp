#include "application.h"
#include "desktop.h"
#include "mainwindow.h"
#include "processes.h"
#include "support/testprogram.h"
#include "systemcalls.h"

#include <QDirIterator>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const auto canaryKey = u"canaryKeyQ7vx"_s;
const auto canarySecret = u"canarySecretW8kz"_s;
const auto canaryPassphrase = u"canaryPhraseJ3qy"_s;
const auto canaryToken = u"canaryTokenP5xw"_s;
const QStringList canaries = {canaryKey, canarySecret, canaryPassphrase, canaryToken};

// Valid keys and a claim that succeeds, whatever was asked; it holds none of what was typed.
const auto answer = "status=valid_read_only\ncredentials_saved=true\n{\"status\":\"ok\"}\n"_ba;

QStringList filesBelow(const QString &directory)
{
    QStringList files;
    for (QDirIterator all(directory, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                          QDirIterator::Subdirectories);
         all.hasNext();)
        files.append(all.next());
    files.sort();
    return files;
}

// A failed comparison shows the calls.
QByteArray listed(const QByteArrayList &calls)
{
    return calls.join('\n');
}

} // namespace

/// What is typed reaches the connector and nothing else: watched from outside, call by call.
class TestDiscretion : public QObject
{
    Q_OBJECT

    void type(const QString &caption, const QString &text)
    {
        QVERIFY(m_window->fill(m_window->fieldBelow(caption), text));
        QTRY_COMPARE(m_window->fieldBelow(caption).characterCount(), text.size());
    }

    /// A claimed token and validated keys, with everything that shows them opened.
    void useEverything()
    {
        QVERIFY(m_window->fill(m_window->tokenField(), canaryToken));
        QTRY_COMPARE(m_window->tokenField().text(), canaryToken);
        QVERIFY(m_window->clickButton(u"Claim token"_s));
        QTRY_COMPARE(m_window->tileWord(u"Binding"_s), u"not bound"_s);
        QVERIFY(m_window->click(m_window->tab(u"OKX"_s)));
        QTRY_VERIFY(!m_window->fieldBelow(u"Passphrase"_s).isNull());
        type(u"API key"_s, canaryKey);
        type(u"API secret"_s, canarySecret);
        type(u"Passphrase"_s, canaryPassphrase);
        QVERIFY(m_window->clickButton(u"Validate and save keys"_s));
        QTRY_VERIFY(m_window->shows(u"Status: valid"_s));
        QVERIFY(m_window->clickButton(u"Open technical log"_s));
        QTRY_COMPARE(m_window->newestLogEntry().title, u"balance OKX"_s);
    }

    [[nodiscard]] QString tracePath() const { return m_traces.filePath(u"calls"_s); }

    QTemporaryDir m_traces;
    QStringList m_homeBefore;
    QStringList m_placeBefore;
    QByteArray m_environment;
    std::unique_ptr<Application> m_application;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<SystemCalls> m_calls;

private slots:
    void initTestCase()
    {
        QVERIFY(enableAccessibility());
        const desktop::WindowManager manager;
        m_application = std::make_unique<Application>();
        QVERIFY(m_application->installPrinter(answer));
        m_homeBefore = filesBelow(QDir::homePath());
        m_placeBefore = filesBelow(m_application->directory());
        QVERIFY(m_application->startBy(SystemCalls::traceInto(tracePath())));
        m_window = std::make_unique<MainWindow>(*m_application);
        QTRY_VERIFY(m_window->shows(u"9 command log entries available"_s));
        m_environment = processFile(m_application->processId(), u"environ"_s);
        useEverything();

        QTRY_VERIFY(m_application->root().children().constFirst().is(AccessibleNode::State::Active));
        manager.closeActiveWindow();
        QCOMPARE(m_application->waitForEnd(), 0);
        // The tracer may lag behind on a busy machine.
        QTRY_VERIFY2_WITH_TIMEOUT((m_calls = std::make_unique<SystemCalls>(tracePath()))->isComplete(),
                                  m_calls->lastLine().constData(), 30'000);
    }

    // Else nothing below would mean anything.
    void wasReallyUsed()
    {
        QCOMPARE(m_calls->runs({u"validate"_s, u"okx"_s, canaryKey, canarySecret, canaryPassphrase}).size(),
                 1);
        QCOMPARE(m_calls->runs({u"claim-token"_s, canaryToken}).size(), 1);
        QVERIFY(!m_calls->localSockets().isEmpty());
        QVERIFY(!m_calls->opened().isEmpty());
        QVERIFY(!m_calls->writesOf(u"credentials_saved"_s).isEmpty());
    }

    void secretsAreOnlyArguments_data()
    {
        QTest::addColumn<QString>("canary");
        QTest::newRow("secret") << canarySecret;
        QTest::newRow("passphrase") << canaryPassphrase;
    }

    // The script that stands for the connector hands its own arguments on to nobody. So not even the X
    // server, the desktop's buses or an input method get to know them.
    void secretsAreOnlyArguments()
    {
        QFETCH(const QString, canary);
        QCOMPARE(m_calls->holding(canary),
                 m_calls->runs({u"validate"_s, u"okx"_s, canaryKey, canarySecret, canaryPassphrase}));
    }

    void nothingTypedIsWritten_data()
    {
        QTest::addColumn<QString>("canary");
        for (const QString &canary : canaries)
            QTest::addRow("%s", qPrintable(canary)) << canary;
    }

    void nothingTypedIsWritten()
    {
        QFETCH(const QString, canary);
        QCOMPARE(listed(m_calls->writesOf(canary)), QByteArray());
    }

    void environmentsHoldNothingTyped()
    {
        QVERIFY(m_environment.contains("PATH="));
        for (const QString &canary : canaries) {
            QVERIFY(!m_environment.contains(canary.toLatin1()));
            QCOMPARE(listed(m_calls->runsWithEnvironmentHolding(canary)), QByteArray());
        }
    }

    void printsNothing() { QCOMPARE(m_application->printed(), QByteArray()); }

    void opensNoNetwork() { QCOMPARE(listed(m_calls->otherSockets()), QByteArray()); }

    void opensNoFileForWriting()
    {
        QCOMPARE(listed(m_calls->openedForWriting()), QByteArray());
        QCOMPARE(listed(m_calls->changes()), QByteArray());
    }

    void leavesNothingBehind()
    {
        QCOMPARE(filesBelow(QDir::homePath()), m_homeBefore);
        QCOMPARE(filesBelow(m_application->directory()), m_placeBefore);
    }
};

static const TestClass<TestDiscretion> testDiscretion("tst_discretion");

#include "tst_discretion.moc"
