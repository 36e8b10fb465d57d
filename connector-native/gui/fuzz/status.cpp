#include "bridge/statusrules.h"

#include "fuzzing.h"

namespace {

std::u16string plainConnectorWord(const std::u16string &text)
{
    if (contains(text, u"connector_health=ready")) {
        return u"ready";
    }
    return contains(text, u"connector_health=pairing_required") ? u"pairing required" : u"starting";
}

std::u16string plainServerWord(const std::u16string &text)
{
    if (contains(text, u"\"reachable\":true")) {
        return u"reachable";
    }
    return contains(text, u"\"reachable\":false") ? u"unreachable" : u"unknown";
}

std::u16string plainBindingWord(const std::u16string &text)
{
    if (contains(text, u"\"bindState\":\"authorized\"") || contains(text, u"\"pairingStatus\":\"bound\"")) {
        return u"authorized";
    }
    if (contains(text, u"pending_signature")) {
        return u"pending signature";
    }
    return contains(text, u"token_waiting") ? u"token waiting" : u"not bound";
}

std::u16string plainClaimWord(const std::u16string &text)
{
    if (contains(text, u"pending_signature")) {
        return u"pending signature";
    }
    return contains(text, u"\"status\":\"ok\"") ? u"claimed" : u"claim failed";
}

void checkStatus(QByteArrayView input)
{
    const QString output = QString::fromUtf8(input);
    const std::u16string text = output.toStdU16String();
    const BindingVerdict verdict = bindingVerdict(output);
    const bool isPolled = verdict.polling == Polling::KeepGoing;

    demand(connectorWord(output).word.toStdU16String() == plainConnectorWord(text), "the connector's word");
    demand(serverWord(output).word.toStdU16String() == plainServerWord(text), "the server's word");
    demand(verdict.status.word.toStdU16String() == plainBindingWord(text), "the binding's word");
    demand(isPolled == (plainBindingWord(text) == u"pending signature"), "only a signature is waited for");
    demand(claimWord(output).word.toStdU16String() == plainClaimWord(text), "the claim's word");
}

const FuzzTarget statusTarget("status", checkStatus);

} // namespace
