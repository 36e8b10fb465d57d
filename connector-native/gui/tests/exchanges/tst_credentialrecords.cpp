#include "exchanges/credentialrules.h"
#include "support/markerorders.h"
#include "support/testprogram.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {

using Draft = ExchangeCredentialDraft;

// One thing that may happen to a record: what the rules make of it, and what a reader of the answer would
// write down.
struct Event
{
    const char *name;
    std::function<Draft(const Draft &)> rule;
    std::function<void(Draft &)> expected;
};

Event loadFound(const char *name, const QString &values, const std::function<void(Draft &)> &written)
{
    return {name, [values](const Draft &draft) { return afterLoad(draft, u"status=ok\n"_s + values); },
            [written](Draft &draft) {
                written(draft);
                draft.loadedFromVault = true;
            }};
}

Event loadRefused()
{
    return {"load, nothing saved",
            [](const Draft &draft) { return afterLoad(draft, u"status=missing\napi_key=NO"_s); },
            [](Draft &draft) {
                if (!draft.loadedFromVault) {
                    draft = {};
                }
            }};
}

Event accepted(const char *name, const QString &output, bool saved)
{
    return {name, [output](const Draft &draft) { return afterValidation(draft, output); },
            [output, saved](Draft &draft) {
                draft.status = u"valid"_s;
                draft.valid = true;
                draft.validationOutput = output;
                draft.loadedFromVault = saved;
            }};
}

Event refused(const char *name, const QString &output, const QString &word)
{
    return {name, [output](const Draft &draft) { return afterValidation(draft, output); },
            [output, word](Draft &draft) {
                draft.status = word;
                draft.valid = false;
                draft.validationOutput = output;
            }};
}

Event deleted()
{
    return {"delete", [](const Draft &) { return afterDeletion(); },
            [](Draft &draft) {
                draft = {};
                draft.status = u"not configured"_s;
                draft.validationOutput = u"credentials deleted"_s;
            }};
}

Event balanceRead(const char *name, const QString &output)
{
    return {name, [output](const Draft &draft) { return afterBalance(draft, output); },
            [output](Draft &draft) { draft.balance = output; }};
}

Event fieldTyped(const char *name, QString Draft::*field)
{
    const auto type = [field](Draft draft) {
        draft.*field += u'x';
        return draft;
    };
    return {name, type, [field](Draft &draft) { draft.*field += u'x'; }};
}

const QList<Event> &events()
{
    static const QList<Event> all{
        loadFound("load all", u"api_key=K\napi_secret=S\npassphrase=P"_s,
                  [](Draft &draft) {
                      draft.apiKey = u"K"_s;
                      draft.apiSecret = u"S"_s;
                      draft.passphrase = u"P"_s;
                  }),
        loadFound("load the secret alone", u"api_secret="_s, [](Draft &draft) { draft.apiSecret = u""_s; }),
        loadRefused(),
        accepted("valid and saved", u"status=valid_trade_ready\ncredentials_saved=true"_s, true),
        accepted("valid and not saved", u"status=valid_read_only"_s, false),
        refused("invalid", u"status=invalid\ncredentials_saved=true"_s, u"invalid"_s),
        refused("configured", u"status=configured"_s, u"adapter exists, live validation pending"_s),
        refused("no answer", {}, u"unknown"_s),
        deleted(),
        balanceRead("balance", u"{\"total\":\"1\"}"_s),
        balanceRead("balance, empty", {}),
        fieldTyped("type a key", &Draft::apiKey),
        fieldTyped("type a secret", &Draft::apiSecret),
        fieldTyped("type a passphrase", &Draft::passphrase),
    };
    return all;
}

} // namespace

// Records over their whole life.
class TestCredentialRecords : public QObject
{
    Q_OBJECT

    void follow(const Draft &draft, const Draft &expected, int steps, const QByteArrayList &history)
    {
        for (const Event &event : events()) {
            const Draft actual = event.rule(draft);
            Draft written = expected;
            event.expected(written);
            const QByteArrayList now = history + QByteArrayList{event.name};
            QVERIFY2(actual == written, now.join(" > ").constData());
            ++m_compared;
            if (steps > 1) {
                follow(actual, written, steps - 1, now);
            }
        }
    }

    int m_compared = 0;

private slots:
    void everyHistoryOfFourEventsEndsAsWrittenDown()
    {
        follow({}, {}, 4, {});
        QCOMPARE(m_compared, 14 + 14 * 14 + 14 * 14 * 14 + 14 * 14 * 14 * 14);
    }

    void theFirstMarkerOfAValidationCountsInWhateverOrder()
    {
        const QList<std::pair<QString, QString>> table{
            {u"status=valid_trade_ready"_s, u"valid"_s},
            {u"status=valid_read_only"_s, u"valid"_s},
            {u"status=configured"_s, u"adapter exists, live validation pending"_s},
            {u"status=invalid"_s, u"invalid"_s},
            {u"status=error"_s, u"error"_s},
        };
        QStringList markers{u"credentials_saved=true"_s};
        for (const auto &[marker, word] : table) {
            markers.append(marker);
        }
        forEachMarkerOrder(markers, [&](const QStringList &chosen, const QString &output) {
            const auto row =
                std::ranges::find_if(table, [&](const auto &entry) { return chosen.contains(entry.first); });
            const QString word = row == table.end() ? u"unknown"_s : row->second;
            for (const bool fromVault : {false, true}) {
                Draft draft;
                draft.loadedFromVault = fromVault;
                const Draft validated = afterValidation(draft, output);
                QVERIFY2(validated.status == word, qPrintable(output));
                QCOMPARE(validated.valid, word == u"valid"_s);
                QCOMPARE(validated.loadedFromVault,
                         validated.valid ? chosen.contains(markers[0]) : fromVault);
            }
        });
    }

    void aLoadThatFoundNothingIsRecognisedInWhateverOrder()
    {
        const QStringList markers{u"status=ok"_s, u"status=missing"_s, u"status=error"_s, u"api_key=AK"_s};
        forEachMarkerOrder(markers, [](const QStringList &chosen, const QString &output) {
            const bool found = chosen.contains(u"status=ok"_s);
            Draft typed;
            typed.apiKey = u"typed"_s;
            const Draft loaded = afterLoad(typed, output);
            QVERIFY2(loaded.loadedFromVault == found, qPrintable(output));
            QCOMPARE(loaded.apiKey,
                     !found                                 ? QString()
                         : chosen.contains(u"api_key=AK"_s) ? u"AK"_s
                                                            : u"typed"_s);
        });
    }
};

static const TestClass<TestCredentialRecords> testCredentialRecords("tst_credentialrecords");

#include "tst_credentialrecords.moc"
