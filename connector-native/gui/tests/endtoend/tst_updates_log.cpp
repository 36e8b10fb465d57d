#include "application.h"
#include "desktop.h"
#include "mainwindow.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int startupCalls = 9;

const auto nothingYet = u"No update action yet"_s;
const auto done = u"Update action completed. Technical output is available below."_s;

} // namespace

/// The update buttons, and the technical log that shows what they and all others have printed.
class UpdatesAndLogTest : public QObject
{
    Q_OBJECT

    void openLog()
    {
        QVERIFY(m_window->clickButton(u"Open technical log"_s));
        QTRY_VERIFY(!m_window->button(u"Hide technical log"_s).isNull());
        QTRY_VERIFY(!m_window->newestLogEntry().title.isEmpty());
    }

    std::unique_ptr<Application> m_application;
    std::unique_ptr<MainWindow> m_window;

private slots:
    void initTestCase() { QVERIFY(enableAccessibility()); }

    void init()
    {
        m_application = std::make_unique<Application>();
        QVERIFY(m_application->installSimulator());
        QVERIFY(m_application->start());
        m_window = std::make_unique<MainWindow>(*m_application);
        QTRY_COMPARE(m_application->calls().size(), startupCalls);
    }

    void takesTheThreeStepsOfAnUpdate()
    {
        QVERIFY(m_window->shows(nothingYet));
        QVERIFY(m_window->clickButton(u"Check for updates"_s));
        QTRY_VERIFY(m_window->shows(done));
        QVERIFY(!m_window->shows(nothingYet));
        QVERIFY(m_window->clickButton(u"Download update"_s));
        QTRY_COMPARE(m_application->calls().size(), startupCalls + 2);
        QVERIFY(m_window->clickButton(u"Install update"_s));
        QTRY_COMPARE(m_application->calls().size(), startupCalls + 3);
        QCOMPARE(m_application->calls().mid(startupCalls),
                 QList<QStringList>({{u"update-check"_s}, {u"update-download"_s}, {u"update-apply"_s}}));

        openLog();
        const QList<LogEntry> newest = m_window->log().first(3);
        QCOMPARE(newest.at(0),
                 (LogEntry{u"update-apply"_s,
                           u"update=applied\nprevious_version=1.3.2\ncurrent_version=1.4.0\n"_s}));
        QCOMPARE(newest.at(1).title, u"update-download"_s);
        QCOMPARE(newest.at(2).title, u"update-check"_s);
        QVERIFY(newest.at(2).output.startsWith(u"update=available\n"_s));
    }

    void installsWithoutADownloadWhenAsked()
    {
        QVERIFY(m_window->clickButton(u"Install update"_s));
        QTRY_VERIFY(m_window->shows(done));
        QCOMPARE(m_application->calls().mid(startupCalls), QList<QStringList>({{u"update-apply"_s}}));
    }

    void takesAnEmptyAnswerForNoAction()
    {
        QVERIFY(m_window->clickButton(u"Check for updates"_s));
        QTRY_VERIFY(m_window->shows(done));
        QVERIFY(m_application->setFaults("SILENT=1\n"));
        QVERIFY(m_window->clickButton(u"Download update"_s));
        QTRY_VERIFY(m_window->shows(nothingYet));
        QVERIFY(!m_window->shows(done));

        openLog();
        QCOMPARE(m_window->newestLogEntry(), (LogEntry{u"update-download"_s, QString()}));
    }

    void countsWhileClosedAndListsWhileOpen()
    {
        QVERIFY(m_window->shows(u"9 command log entries available"_s));
        QVERIFY(m_window->clickButton(u"Check for updates"_s));
        QTRY_VERIFY(m_window->shows(u"10 command log entries available"_s));

        openLog();
        QVERIFY(!m_window->shows(u"10 command log entries available"_s));
        QCOMPARE(m_window->logTitles(),
                 QStringList({u"update-check"_s, u"status"_s, u"bind-status"_s, u"server-health"_s,
                              u"status"_s, u"load-credentials Bybit"_s, u"status"_s, u"bind-status"_s,
                              u"server-health"_s, u"status"_s}));

        QVERIFY(m_window->clickButton(u"Check server"_s));
        QTRY_COMPARE(m_application->calls().size(), startupCalls + 2);
        QCOMPARE(
            m_window->newestLogEntry(),
            (LogEntry{u"server-health"_s, u"{\"reachable\":true,\"latencyMs\":18,\"protocol\":\"v1\"}\n"_s}));
        QCOMPARE(m_window->log().size(), 11);

        QVERIFY(m_window->clickButton(u"Hide technical log"_s));
        QTRY_VERIFY(m_window->shows(u"11 command log entries available"_s));
        QVERIFY(!m_window->shows(u"load-credentials Bybit"_s));
        QVERIFY(!m_window->button(u"Open technical log"_s).isNull());
    }

    void copiesWhatTheMouseSelects_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::newRow("one line") << QByteArray("one line without an end");
        QTest::newRow("lines") << QByteArray("a=1\nb=2\n\nc=3\n");
        QTest::newRow("carriage return and line feed") << QByteArray("a=1\r\nb=2\r\n");
        QTest::newRow("lone carriage returns") << QByteArray("10 %\r55 %\r100 %\nend");
        QTest::newRow("no-break blanks") << QByteArray("1\u00a0234,50\u202f€ and\u00a0so on");
        QTest::newRow("tabs and blanks") << QByteArray("  a\t b  \n\tc   \n");
        QTest::newRow("separators") << QByteArray("a\u2028b\u2029c");
        QTest::newRow("other scripts and emoji") << QByteArray("ключ 钥匙 🔑 e\u0301 שלום");
        QTest::newRow("markup") << QByteArray("<b>bold</b> &amp; <img src=\"x\">");
    }

    void copiesWhatTheMouseSelects()
    {
        QFETCH(const QByteArray, output);
        QVERIFY(m_application->installPrinter(output));
        QVERIFY(m_window->clickButton(u"Check for updates"_s));
        QTRY_VERIFY(m_window->shows(done));
        openLog();

        const QRect place = m_window->bringIntoView(m_window->outputBelow(u"update-check"_s));
        QVERIFY(!place.isEmpty());
        desktop::drag(place.topLeft() + QPoint(0, 2), place.bottomRight() - QPoint(0, 2));
        desktop::setClipboard(u"what was there before"_s);
        desktop::press(u"ctrl+c"_s);
        QTRY_COMPARE(desktop::clipboard(), output);

        desktop::setClipboard(u"what was there before"_s);
        desktop::press(u"ctrl+a"_s);
        desktop::press(u"ctrl+Insert"_s);
        QTRY_COMPARE(desktop::clipboard(), output);
    }

    void copiesAPartOfALine()
    {
        QVERIFY(m_application->installPrinter("first line\r\nsecond\u00a0line\r\n"));
        QVERIFY(m_window->clickButton(u"Check for updates"_s));
        QTRY_VERIFY(m_window->shows(done));
        openLog();
        QVERIFY(m_window->click(m_window->outputBelow(u"update-check"_s)));
        desktop::press(u"ctrl+Home"_s);
        desktop::press(u"Down"_s);
        for (int step = 0; step < 3; ++step)
            desktop::press(u"Right"_s);
        for (int step = 0; step < 6; ++step)
            desktop::press(u"shift+Right"_s);
        desktop::press(u"ctrl+c"_s);
        QTRY_COMPARE(desktop::clipboard(), QByteArray("ond\u00a0li"));
    }

    void cleanup()
    {
        QCOMPARE(m_application->printed(), QByteArray());
        m_window.reset();
        m_application.reset();
    }
};

QTEST_GUILESS_MAIN(UpdatesAndLogTest)
#include "tst_updates_log.moc"
