#include "bridge/statusrules.h"
#include "support/markerorders.h"
#include "support/testprogram.h"

using namespace Qt::StringLiterals;

namespace {

const QString failure = u"failed to run connector: the file does not exist\nresolved_path=/x/ready"_s;

// What holds when the marker, and none of an earlier row, is in the answer; without a marker, when none is.
struct Expected
{
    QString marker;
    QString word;
    bool good = false;
    Polling polling = Polling::Stop;
};

template <typename Verify> void inEveryOrder(const QList<Expected> &table, const Verify &verify)
{
    QStringList markers;
    for (const Expected &row : table.first(table.size() - 1)) {
        markers.append(row.marker);
    }
    forEachMarkerOrder(markers, [&](const QStringList &chosen, const QString &output) {
        const auto holds = [&](const Expected &row) {
            return row.marker.isEmpty() || chosen.contains(row.marker);
        };
        verify(output, *std::ranges::find_if(table, holds));
    });
}

void compareWord(const StatusWord &actual, const Expected &expected, const QString &output)
{
    QVERIFY2(actual.word == expected.word && actual.good == expected.good, qPrintable(output));
}

void addWords()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("word");
}

} // namespace

class TestStatusRules : public QObject
{
    Q_OBJECT

private slots:
    void connectorWords_data()
    {
        addWords();
        const QString ready = u"connector_health=ready"_s;
        const QString pairing = u"connector_health=pairing_required"_s;
        QTest::newRow("ready") << ready << u"ready"_s;
        QTest::newRow("pairing required") << pairing << u"pairing required"_s;
        QTest::newRow("ready wins when it comes first") << ready + u'\n' + pairing << u"ready"_s;
        QTest::newRow("ready wins when it comes last") << pairing + u'\n' + ready << u"ready"_s;
        QTest::newRow("in the middle of a line") << u"a "_s + ready + u" b"_s << u"ready"_s;
        QTest::newRow("on a later line") << u"version=1\n\n"_s + pairing + u'\n' << u"pairing required"_s;
        QTest::newRow("part of longer words") << u"my"_s + ready + u"ish"_s << u"ready"_s;
        QTest::newRow("after a NUL") << u"a\0"_s + ready << u"ready"_s;
        QTest::newRow("nothing printed") << QString() << u"starting"_s;
        QTest::newRow("no marker") << u"connector_health=warming_up"_s << u"starting"_s;
        QTest::newRow("another case") << u"CONNECTOR_HEALTH=READY"_s << u"starting"_s;
        QTest::newRow("blanks around the sign") << u"connector_health = ready"_s << u"starting"_s;
        QTest::newRow("broken by a line feed") << u"connector_health=\nready"_s << u"starting"_s;
        QTest::newRow("launch failure") << failure << u"starting"_s;
    }

    void connectorWords()
    {
        QFETCH(QString, output);
        QTEST(connectorWord(output).word, "word");
        QCOMPARE(connectorWord(output).good, connectorWord(output).word == u"ready"_s);
    }

    void serverWords_data()
    {
        addWords();
        const QString yes = uR"("reachable":true)"_s;
        const QString no = uR"("reachable":false)"_s;
        QTest::newRow("reachable") << yes << u"reachable"_s;
        QTest::newRow("unreachable") << no << u"unreachable"_s;
        QTest::newRow("reachable wins when it comes first") << yes + no << u"reachable"_s;
        QTest::newRow("reachable wins when it comes last") << no + yes << u"reachable"_s;
        QTest::newRow("inside an object") << u"ok\n{\"ms\":3,"_s + no + u"}\n"_s << u"unreachable"_s;
        QTest::newRow("blank after the colon") << uR"("reachable": true)"_s << u"unknown"_s;
        QTest::newRow("blank before the colon") << uR"("reachable" :false)"_s << u"unknown"_s;
        QTest::newRow("no quotes") << u"reachable:true"_s << u"unknown"_s;
        QTest::newRow("escaped quotes") << uR"(\"reachable\":true)"_s << u"unknown"_s;
        QTest::newRow("another case") << uR"("Reachable":true)"_s << u"unknown"_s;
        QTest::newRow("end of a longer key") << uR"("unreachable":true)"_s << u"unknown"_s;
        QTest::newRow("nothing printed") << QString() << u"unknown"_s;
        QTest::newRow("launch failure") << failure << u"unknown"_s;
    }

    void serverWords()
    {
        QFETCH(QString, output);
        QTEST(serverWord(output).word, "word");
        QCOMPARE(serverWord(output).good, serverWord(output).word == u"reachable"_s);
    }

    void bindingWords_data()
    {
        addWords();
        QTest::addColumn<bool>("keepsGoing");
        const QString authorized = uR"("bindState":"authorized")"_s;
        const QString bound = uR"("pairingStatus":"bound")"_s;
        const QString pending = u"pending_signature"_s;
        const QString waiting = u"token_waiting"_s;
        QTest::newRow("authorized") << authorized << u"authorized"_s << false;
        QTest::newRow("bound") << bound << u"authorized"_s << false;
        QTest::newRow("pending signature") << pending << u"pending signature"_s << true;
        QTest::newRow("token waiting") << waiting << u"token waiting"_s << false;
        QTest::newRow("session missing") << u"session_missing"_s << u"not bound"_s << false;
        QTest::newRow("unpaired") << u"unpaired"_s << u"not bound"_s << false;
        QTest::newRow("none of these") << u"{}"_s << u"not bound"_s << false;
        QTest::newRow("nothing printed") << QString() << u"not bound"_s << false;
        QTest::newRow("launch failure") << failure << u"not bound"_s << false;
        QTest::newRow("bound in another bind state")
            << uR"({"bindState":"waiting","pairingStatus":"bound"})"_s << u"authorized"_s << false;
        QTest::newRow("authorized wins over pending") << pending + authorized << u"authorized"_s << false;
        QTest::newRow("bound wins over pending") << pending + bound << u"authorized"_s << false;
        QTest::newRow("pending wins over waiting") << waiting + pending << u"pending signature"_s << true;
        QTest::newRow("pending wins over unpaired")
            << u"unpaired "_s + pending << u"pending signature"_s << true;
        QTest::newRow("waiting wins over session missing")
            << u"session_missing "_s + waiting << u"token waiting"_s << false;
        QTest::newRow("waiting wins over unpaired")
            << u"unpaired "_s + waiting << u"token waiting"_s << false;
        QTest::newRow("pending as a value")
            << uR"({"bindState":"pending_signature"})"_s << u"pending signature"_s << true;
        QTest::newRow("pending inside a word") << u"xpending_signatures"_s << u"pending signature"_s << true;
        QTest::newRow("authorized with a blank")
            << uR"("bindState": "authorized")"_s << u"not bound"_s << false;
        QTest::newRow("authorized alone") << u"authorized"_s << u"not bound"_s << false;
        QTest::newRow("bound alone") << u"bound"_s << u"not bound"_s << false;
        QTest::newRow("pending in another case") << u"PENDING_SIGNATURE"_s << u"not bound"_s << false;
        QTest::newRow("pending with a blank") << u"pending signature"_s << u"not bound"_s << false;
    }

    void bindingWords()
    {
        QFETCH(QString, output);
        QFETCH(bool, keepsGoing);
        const BindingVerdict verdict = bindingVerdict(output);
        QTEST(verdict.status.word, "word");
        QCOMPARE(verdict.status.good, verdict.status.word == u"authorized"_s);
        QCOMPARE(verdict.polling, keepsGoing ? Polling::KeepGoing : Polling::Stop);
    }

    void claimWords_data()
    {
        addWords();
        const QString ok = uR"("status":"ok")"_s;
        const QString pending = u"pending_signature"_s;
        QTest::newRow("pending signature") << pending << u"pending signature"_s;
        QTest::newRow("claimed") << ok << u"claimed"_s;
        QTest::newRow("neither") << uR"("status":"error")"_s << u"claim failed"_s;
        QTest::newRow("pending wins when it comes first") << pending + ok << u"pending signature"_s;
        QTest::newRow("pending wins when it comes last") << ok + pending << u"pending signature"_s;
        QTest::newRow("inside an object") << u"log\n{\"n\":1,"_s + ok + u"}"_s << u"claimed"_s;
        QTest::newRow("status as a line") << u"status=ok"_s << u"claim failed"_s;
        QTest::newRow("blank after the colon") << uR"("status": "ok")"_s << u"claim failed"_s;
        QTest::newRow("longer value") << uR"("status":"okay")"_s << u"claim failed"_s;
        QTest::newRow("a binding's own marker") << uR"("bindState":"authorized")"_s << u"claim failed"_s;
        QTest::newRow("nothing printed") << QString() << u"claim failed"_s;
        QTest::newRow("launch failure") << failure << u"claim failed"_s;
    }

    void claimWords()
    {
        QFETCH(QString, output);
        QTEST(claimWord(output).word, "word");
        QVERIFY(!claimWord(output).good);
    }

    void theFirstMarkerOfTheTableCountsInWhateverOrder()
    {
        inEveryOrder({{u"connector_health=ready"_s, u"ready"_s, true},
                      {u"connector_health=pairing_required"_s, u"pairing required"_s},
                      {{}, u"starting"_s}},
                     [](const QString &output, const Expected &expected) {
                         compareWord(connectorWord(output), expected, output);
                     });
        inEveryOrder({{u"\"reachable\":true"_s, u"reachable"_s, true},
                      {u"\"reachable\":false"_s, u"unreachable"_s},
                      {{}, u"unknown"_s}},
                     [](const QString &output, const Expected &expected) {
                         compareWord(serverWord(output), expected, output);
                     });
        inEveryOrder({{u"\"bindState\":\"authorized\""_s, u"authorized"_s, true},
                      {u"\"pairingStatus\":\"bound\""_s, u"authorized"_s, true},
                      {u"pending_signature"_s, u"pending signature"_s, false, Polling::KeepGoing},
                      {u"token_waiting"_s, u"token waiting"_s},
                      {u"session_missing"_s, u"not bound"_s},
                      {u"unpaired"_s, u"not bound"_s},
                      {{}, u"not bound"_s}},
                     [](const QString &output, const Expected &expected) {
                         compareWord(bindingVerdict(output).status, expected, output);
                         QCOMPARE(bindingVerdict(output).polling, expected.polling);
                     });
        inEveryOrder({{u"pending_signature"_s, u"pending signature"_s},
                      {u"\"status\":\"ok\""_s, u"claimed"_s},
                      {{}, u"claim failed"_s}},
                     [](const QString &output, const Expected &expected) {
                         compareWord(claimWord(output), expected, output);
                     });
    }
};

static const TestClass<TestStatusRules> testStatusRules("tst_statusrules");

#include "tst_statusrules.moc"
