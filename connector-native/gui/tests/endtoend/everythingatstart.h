#pragma once

#include <QStringList>

/// All that assistive technologies find when the program has just been started and its connector is not
/// paired, in reading order: what it is and its name.
[[nodiscard]] inline QStringList everythingAtStart()
{
    using namespace Qt::StringLiterals;
    return {
        u"label: Brindlecove Connector"_s,
        u"label: Token-first bridge between web terminal, server and exchange APIs"_s,
        u"button: Refresh all"_s,
        u"label: Connector"_s,
        u"label: pairing required"_s,
        u"label: Server"_s,
        u"label: reachable"_s,
        u"label: Binding"_s,
        u"label: not bound"_s,
        u"label: Connector bind"_s,
        u"label: Paste the bind token from the web app, claim it here, then finish the wallet signature in the browser."_s,
        u"text: Bind token from terminal.brindlecove.example"_s,
        u"button: Claim token"_s,
        u"button: Disconnect"_s,
        u"button: Check server"_s,
        u"label: Quick state"_s,
        u"label: Connector: pairing required • Server: reachable • Binding: not bound"_s,
        u"label: Token and bind details"_s,
        u"button: Show details"_s,
        u"label: Raw token, server, and binding output is hidden by default."_s,
        u"label: Exchange API"_s,
        u"label: Validate credentials against the selected exchange, save them locally, then load balances when needed."_s,
        u"tab: Bybit"_s,
        u"tab: OKX"_s,
        u"tab: Gate"_s,
        u"tab: BingX"_s,
        u"tab: KuCoin"_s,
        u"tab: Bitget"_s,
        u"label: API key"_s,
        u"text: API key"_s,
        u"label: API secret"_s,
        u"password: API secret"_s,
        u"button: Validate and save keys"_s,
        u"button: Load balance"_s,
        u"button: Delete"_s,
        u"label: Status: not checked"_s,
        u"label: Balance not loaded yet"_s,
        u"label: Live credential validation is enabled for Bybit, OKX, Gate, BingX, KuCoin, and Bitget."_s,
        u"label: Updates"_s,
        u"label: Check for a new version, download it, then install it when you are ready."_s,
        u"button: Check for updates"_s,
        u"button: Download update"_s,
        u"button: Install update"_s,
        u"label: No update action yet"_s,
        u"label: Technical log"_s,
        u"label: All raw command output lives here and stays hidden by default."_s,
        u"button: Open technical log"_s,
        u"label: 9 command log entries available"_s};
}
