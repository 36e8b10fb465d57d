#pragma once

#include <QString>

/// The rules that turn a connector's answer into the short status words of the window.
/// Pure functions, callable from any thread. All tests are exact, case-sensitive substring tests over the
/// whole text; a text without any marker, a launch failure included, gives the last word of its rule.

/// "ready", "pairing required" or "starting", from the answer to "status".
[[nodiscard]] QString connectorWord(const QString &output);

/// "reachable", "unreachable" or "unknown", from the answer to "server-health".
[[nodiscard]] QString serverWord(const QString &output);

enum class Polling { Stop, KeepGoing };

struct BindingVerdict
{
    QString word;
    Polling polling = Polling::Stop;
};

/// "authorized", "pending signature", "token waiting" or "not bound", from the answer to "bind-status",
/// and whether the binding is worth watching further.
[[nodiscard]] BindingVerdict bindingVerdict(const QString &output);

/// "pending signature", "claimed" or "claim failed", from the answer to "claim-token".
[[nodiscard]] QString claimWord(const QString &output);
