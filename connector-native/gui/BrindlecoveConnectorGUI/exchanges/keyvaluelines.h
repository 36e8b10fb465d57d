#pragma once

#include <QString>

#include <optional>

/// The text after `key=` on the first line that begins with it, untrimmed and possibly empty; nothing
/// when no line does. Only a line feed of its own ends a line: a carriage return and line feed together
/// count as one character of the line. Safe from any thread.
[[nodiscard]] std::optional<QString> extractValue(const QString &output, const QString &key);
