#include "exchanges/credentialrules.h"
#include "support/testprogram.h"

using namespace Qt::StringLiterals;

namespace {

// Every field differs from its initial value, so that a field which should survive is seen to.
ExchangeCredentialDraft typedDraft()
{
    return {.apiKey = u"typed key"_s,
            .apiSecret = u"typed secret"_s,
            .passphrase = u"typed phrase"_s,
            .status = u"invalid"_s,
            .balance = u"{\"total\":\"1\"}"_s,
            .validationOutput = u"status=invalid"_s,
            .loadedFromVault = false};
}

ExchangeCredentialDraft vaultDraft()
{
    ExchangeCredentialDraft draft = typedDraft();
    draft.loadedFromVault = true;
    return draft;
}

ExchangeCredentialDraft loadedDraft(const QString &key, const QString &secret, const QString &passphrase)
{
    ExchangeCredentialDraft draft = vaultDraft();
    draft.apiKey = key;
    draft.apiSecret = secret;
    draft.passphrase = passphrase;
    return draft;
}

} // namespace

class TestCredentialRules : public QObject
{
    Q_OBJECT

private slots:
    void foldsLoad_data()
    {
        QTest::addColumn<ExchangeCredentialDraft>("draft");
        QTest::addColumn<QString>("output");
        QTest::addColumn<ExchangeCredentialDraft>("expected");

        const QString key = u"typed key"_s;
        const QString secret = u"typed secret"_s;
        const QString phrase = u"typed phrase"_s;

        QTest::newRow("ok with all three values")
            << typedDraft() << u"status=ok\napi_key=AK\napi_secret=AS\npassphrase=PP\n"_s
            << loadedDraft(u"AK"_s, u"AS"_s, u"PP"_s);
        QTest::newRow("ok with the key alone keeps typed secret and passphrase")
            << typedDraft() << u"status=ok\napi_key=AK"_s << loadedDraft(u"AK"_s, secret, phrase);
        QTest::newRow("ok with the secret alone keeps the rest")
            << typedDraft() << u"status=ok\napi_secret=AS"_s << loadedDraft(key, u"AS"_s, phrase);
        QTest::newRow("ok with the passphrase alone keeps the rest")
            << typedDraft() << u"status=ok\npassphrase=PP"_s << loadedDraft(key, secret, u"PP"_s);
        QTest::newRow("ok without values only marks the record")
            << typedDraft() << u"status=ok"_s << loadedDraft(key, secret, phrase);
        QTest::newRow("ok with empty values empties the fields")
            << typedDraft() << u"status=ok\napi_key=\napi_secret=\npassphrase="_s
            << loadedDraft(u""_s, u""_s, u""_s);
        QTest::newRow("ok after the values counts")
            << typedDraft() << u"api_key=AK\nexit status=okay"_s << loadedDraft(u"AK"_s, secret, phrase);
        QTest::newRow("ok wins over a later error")
            << typedDraft() << u"status=ok\nstatus=error"_s << loadedDraft(key, secret, phrase);
        QTest::newRow("ok on a record from the vault takes the new values")
            << vaultDraft() << u"status=ok\napi_key=AK"_s << loadedDraft(u"AK"_s, secret, phrase);
        QTest::newRow("ok with CR LF endings keeps them one line")
            << typedDraft() << u"api_key=AK\r\nstatus=ok\r\napi_secret=AS"_s
            << loadedDraft(u"AK\r\nstatus=ok\r\napi_secret=AS"_s, secret, phrase);
        QTest::newRow("missing keeps a record from the vault")
            << vaultDraft() << u"status=missing\napi_key=AK"_s << vaultDraft();
        QTest::newRow("empty answer keeps a record from the vault") << vaultDraft() << u""_s << vaultDraft();
        QTest::newRow("missing wipes a typed record")
            << typedDraft() << u"status=missing"_s << ExchangeCredentialDraft{};
        QTest::newRow("empty answer wipes a typed record")
            << typedDraft() << u""_s << ExchangeCredentialDraft{};
        QTest::newRow("failed launch wipes a typed record")
            << typedDraft() << u"failed to run connector: no such file\nresolved_path=/x"_s
            << ExchangeCredentialDraft{};
        QTest::newRow("ok in other case is no ok")
            << typedDraft() << u"STATUS=OK\napi_key=AK"_s << ExchangeCredentialDraft{};
        QTest::newRow("ok with blanks is no ok")
            << typedDraft() << u"status = ok\napi_key=AK"_s << ExchangeCredentialDraft{};
    }

    void foldsLoad()
    {
        QFETCH(const ExchangeCredentialDraft, draft);
        QFETCH(const QString, output);
        QFETCH(const ExchangeCredentialDraft, expected);

        QCOMPARE(afterLoad(draft, output), expected);
    }

    void foldsValidation_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("status");
        QTest::addColumn<bool>("afterTyping");
        QTest::addColumn<bool>("afterVault");

        const QString pending = u"adapter exists, live validation pending"_s;
        QTest::newRow("trade ready and saved")
            << u"status=valid_trade_ready\ncredentials_saved=true"_s << u"valid"_s << true << true;
        QTest::newRow("read only and saved")
            << u"status=valid_read_only\ncredentials_saved=true"_s << u"valid"_s << true << true;
        QTest::newRow("saved before the status line")
            << u"credentials_saved=true\nstatus=valid_read_only"_s << u"valid"_s << true << true;
        QTest::newRow("trade ready, not saved clears the vault flag")
            << u"status=valid_trade_ready"_s << u"valid"_s << false << false;
        QTest::newRow("read only, not saved clears the vault flag")
            << u"status=valid_read_only\ncredentials_saved=false"_s << u"valid"_s << false << false;
        QTest::newRow("configured") << u"status=configured"_s << pending << false << true;
        QTest::newRow("invalid") << u"status=invalid"_s << u"invalid"_s << false << true;
        QTest::newRow("error") << u"status=error"_s << u"error"_s << false << true;
        QTest::newRow("no marker") << u"validation done"_s << u"unknown"_s << false << true;
        QTest::newRow("empty answer") << u""_s << u"unknown"_s << false << true;
        QTest::newRow("null answer") << QString() << u"unknown"_s << false << true;
        QTest::newRow("failed launch")
            << u"failed to run connector: no such file\nresolved_path=/x"_s << u"unknown"_s << false << true;
        QTest::newRow("valid alone is no marker") << u"status=valid"_s << u"unknown"_s << false << true;
        QTest::newRow("other case is no marker") << u"Status=Invalid"_s << u"unknown"_s << false << true;
        QTest::newRow("saved marker without a valid status does nothing")
            << u"status=configured\ncredentials_saved=true"_s << pending << false << true;
        QTest::newRow("valid before everything else")
            << u"status=error status=invalid status=configured status=valid_read_only"_s << u"valid"_s
            << false << false;
        QTest::newRow("configured before invalid and error")
            << u"status=error\nstatus=invalid\nstatus=configured"_s << pending << false << true;
        QTest::newRow("invalid before error")
            << u"status=error\nstatus=invalid"_s << u"invalid"_s << false << true;
        QTest::newRow("invalid before error in either order")
            << u"status=invalid\nstatus=error"_s << u"invalid"_s << false << true;
        QTest::newRow("marker inside a line")
            << u"exchange=okx;status=invalid_key"_s << u"invalid"_s << false << true;
    }

    void foldsValidation()
    {
        QFETCH(const QString, output);
        QFETCH(const QString, status);
        QFETCH(const bool, afterTyping);
        QFETCH(const bool, afterVault);

        ExchangeCredentialDraft expected = typedDraft();
        expected.status = status;
        expected.valid = status == u"valid"_s;
        expected.validationOutput = output;
        expected.loadedFromVault = afterTyping;
        QCOMPARE(afterValidation(typedDraft(), output), expected);

        expected.loadedFromVault = afterVault;
        QCOMPARE(afterValidation(vaultDraft(), output), expected);
    }

    void resetsOnDeletion()
    {
        const ExchangeCredentialDraft draft = afterDeletion();

        QCOMPARE(draft.apiKey, u""_s);
        QCOMPARE(draft.apiSecret, u""_s);
        QCOMPARE(draft.passphrase, u""_s);
        QCOMPARE(draft.status, u"not configured"_s);
        QVERIFY(!draft.valid);
        QCOMPARE(draft.balance, u"not loaded"_s);
        QCOMPARE(draft.validationOutput, u"credentials deleted"_s);
        QCOMPARE(draft.loadedFromVault, false);
    }

    void storesBalanceAlone_data()
    {
        QTest::addColumn<QString>("output");

        QTest::newRow("answer with blanks and line feeds around it") << u"\n {\"total\":\"1\"} \n"_s;
        QTest::newRow("empty answer stays empty") << u""_s;
        QTest::newRow("error report") << u"{\"status\":\"error\",\"reason\":\"invalid_api_key\"}"_s;
        QTest::newRow("failed launch") << u"failed to run connector: no such file\nresolved_path=/x"_s;
        QTest::newRow("status markers change no status") << u"status=error\nstatus=ok"_s;
        QTest::newRow("NUL and characters outside the BMP") << u"a\0b\U0001F4B0"_s;
    }

    void storesBalanceAlone()
    {
        QFETCH(const QString, output);

        ExchangeCredentialDraft expected = vaultDraft();
        expected.balance = output;
        QCOMPARE(afterBalance(vaultDraft(), output), expected);
    }

    void passesKeysToValidation_data()
    {
        QTest::addColumn<QString>("exchangeId");
        QTest::addColumn<QString>("passphrase");
        QTest::addColumn<QStringList>("arguments");

        const QString key = u" k\ney "_s;
        const QString blank = u" "_s;
        for (const QString &id : {u"okx"_s, u"kucoin"_s, u"bitget"_s}) {
            QTest::addRow("%s with passphrase: five", qPrintable(id))
                << id << u"pp"_s << QStringList{u"validate"_s, id, key, u""_s, u"pp"_s};
            QTest::addRow("%s without passphrase: four", qPrintable(id))
                << id << u""_s << QStringList{u"validate"_s, id, key, u""_s};
            QTest::addRow("%s with a blank as passphrase: five", qPrintable(id))
                << id << blank << QStringList{u"validate"_s, id, key, u""_s, blank};
        }
        for (const QString &id : {u"bybit"_s, u"gate"_s, u"bingx"_s}) {
            QTest::addRow("%s never with passphrase", qPrintable(id))
                << id << u"pp"_s << QStringList{u"validate"_s, id, key, u""_s};
        }
    }

    void passesKeysToValidation()
    {
        QFETCH(const QString, exchangeId);
        QFETCH(const QString, passphrase);
        QFETCH(const QStringList, arguments);

        ExchangeCredentialDraft draft;
        draft.apiKey = u" k\ney "_s;
        draft.passphrase = passphrase;
        QCOMPARE(validateArguments(exchangeOrFirst(exchangeId), draft), arguments);
    }
};

static const TestClass<TestCredentialRules> testCredentialRules("tst_credentialrules");

#include "tst_credentialrules.moc"
