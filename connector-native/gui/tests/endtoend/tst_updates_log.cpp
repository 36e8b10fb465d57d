#include "desktop.h"
#include "support/testprogram.h"
#include "windowtest.h"

using namespace Qt::StringLiterals;

namespace {

const auto nothingYet = u"No update action yet"_s;
const auto done = u"Update action completed. Technical output is available below."_s;

} // namespace

/// The update buttons, and the technical log that shows what they and all others have printed.
class TestUpdatesAndLog : public WindowTest
{
    Q_OBJECT

private slots:
    void takesTheThreeStepsOfAnUpdate()
    {
        QVERIFY(window().shows(nothingYet));
        QVERIFY(window().clickButton(u"Check for updates"_s));
        QTRY_VERIFY(window().shows(done));
        QVERIFY(!window().shows(nothingYet));
        QVERIFY(window().clickButton(u"Download update"_s));
        QTRY_COMPARE(application().calls().size(), startupCalls + 2);
        QVERIFY(window().clickButton(u"Install update"_s));
        QTRY_COMPARE(application().calls().size(), startupCalls + 3);
        QCOMPARE(application().calls().mid(startupCalls),
                 QList<QStringList>({{u"update-check"_s}, {u"update-download"_s}, {u"update-apply"_s}}));

        openLog();
        const QList<LogEntry> newest = window().log().first(3);
        QCOMPARE(newest.at(0),
                 (LogEntry{u"update-apply"_s,
                           u"update=applied\nprevious_version=1.3.2\ncurrent_version=1.4.0\n"_s}));
        QCOMPARE(newest.at(1).title, u"update-download"_s);
        QCOMPARE(newest.at(2).title, u"update-check"_s);
        QVERIFY(newest.at(2).output.startsWith(u"update=available\n"_s));
    }

    void installsWithoutADownloadWhenAsked()
    {
        QVERIFY(window().clickButton(u"Install update"_s));
        QTRY_VERIFY(window().shows(done));
        QCOMPARE(application().calls().mid(startupCalls), QList<QStringList>({{u"update-apply"_s}}));
    }

    void takesAnEmptyAnswerForNoAction()
    {
        QVERIFY(window().clickButton(u"Check for updates"_s));
        QTRY_VERIFY(window().shows(done));
        QVERIFY(application().setFaults("SILENT=1\n"));
        QVERIFY(window().clickButton(u"Download update"_s));
        QTRY_VERIFY(window().shows(nothingYet));
        QVERIFY(!window().shows(done));

        openLog();
        QCOMPARE(window().newestLogEntry(), (LogEntry{u"update-download"_s, QString()}));
    }

    void countsWhileClosedAndListsWhileOpen()
    {
        QVERIFY(window().shows(u"9 command log entries available"_s));
        QVERIFY(window().clickButton(u"Check for updates"_s));
        QTRY_VERIFY(window().shows(u"10 command log entries available"_s));

        openLog();
        QVERIFY(!window().shows(u"10 command log entries available"_s));
        QCOMPARE(window().logTitles(),
                 QStringList({u"update-check"_s, u"status"_s, u"bind-status"_s, u"server-health"_s,
                              u"status"_s, u"load-credentials Bybit"_s, u"status"_s, u"bind-status"_s,
                              u"server-health"_s, u"status"_s}));

        QVERIFY(window().clickButton(u"Check server"_s));
        QTRY_COMPARE(application().calls().size(), startupCalls + 2);
        QCOMPARE(
            window().newestLogEntry(),
            (LogEntry{u"server-health"_s, u"{\"reachable\":true,\"latencyMs\":18,\"protocol\":\"v1\"}\n"_s}));
        QCOMPARE(window().log().size(), 11);

        QVERIFY(window().clickButton(u"Hide technical log"_s));
        QTRY_VERIFY(window().shows(u"11 command log entries available"_s));
        QVERIFY(!window().shows(u"load-credentials Bybit"_s));
        QVERIFY(!window().button(u"Open technical log"_s).isNull());
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
        QVERIFY(application().installPrinter(output));
        QVERIFY(window().clickButton(u"Check for updates"_s));
        QTRY_VERIFY(window().shows(done));
        openLog();

        const QRect place = window().bringIntoView(window().outputBelow(u"update-check"_s));
        QVERIFY(!place.isEmpty());
        desktop::drag(place.topLeft() + QPoint(0, 2), place.bottomRight() - QPoint(0, 2));
        // What the middle button would paste.
        QTRY_COMPARE(desktop::primarySelection(), output);
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
        QVERIFY(application().installPrinter("first line\r\nsecond\u00a0line\r\n"));
        QVERIFY(window().clickButton(u"Check for updates"_s));
        QTRY_VERIFY(window().shows(done));
        openLog();
        QVERIFY(window().click(window().outputBelow(u"update-check"_s)));
        desktop::press(u"ctrl+Home"_s);
        desktop::press(u"Down"_s);
        for (int step = 0; step < 3; ++step)
            desktop::press(u"Right"_s);
        for (int step = 0; step < 6; ++step)
            desktop::press(u"shift+Right"_s);
        desktop::press(u"ctrl+c"_s);
        QTRY_COMPARE(desktop::clipboard(), QByteArray("ond\u00a0li"));
    }
};

static const TestClass<TestUpdatesAndLog> testUpdatesAndLog("tst_updates_log");

#include "tst_updates_log.moc"
