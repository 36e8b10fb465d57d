#pragma once

#include <QString>

/// A short status word as the user reads it, and whether it says that all is well.
struct StatusWord
{
    QString word;
    bool good = false;
};

/// The rules that turn a connector's answer into the short status words of the window.
/// Pure functions, callable from any thread. All tests are exact, case-sensitive substring tests over the
/// whole text; a text without any marker, a launch failure included, gives the last word of its rule.

/// "ready", "pairing required" or "starting", from the answer to "status"; "ready" is good.
[[nodiscard]] StatusWord connectorWord(const QString &output);

/// "reachable", "unreachable" or "unknown", from the answer to "server-health"; "reachable" is good.
[[nodiscard]] StatusWord serverWord(const QString &output);

enum class Polling { Stop, KeepGoing };

struct BindingVerdict
{
    StatusWord status;
    Polling polling = Polling::Stop;
};

/// "authorized", "pending signature", "token waiting" or "not bound", from the answer to "bind-status",
/// and whether the binding is worth watching further; "authorized" is good.
[[nodiscard]] BindingVerdict bindingVerdict(const QString &output);

/// "pending signature", "claimed" or "claim failed", from the answer to "claim-token"; none is good yet.
[[nodiscard]] StatusWord claimWord(const QString &output);
