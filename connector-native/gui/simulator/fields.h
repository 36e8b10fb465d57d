#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// Named texts, kept and printed as lines of the form name=value.
using Fields = std::map<std::string, std::string, std::less<>>;

/// Reads such lines. Lines without "=" are passed over; of two lines with the same name the later one holds.
/// A name that nobody asks for does no harm, so a line is switched off by any mark put before it.
[[nodiscard]] Fields parseFields(std::string_view text);

/// The opposite. Values must be free of line breaks.
[[nodiscard]] std::string formatFields(const Fields &fields);

/// The value of one field, nothing when there is none.
[[nodiscard]] std::optional<std::string> valueOf(const Fields &fields, std::string_view name);

/// A whole decimal number; nothing for any other text, signs and blanks included.
[[nodiscard]] std::optional<unsigned long long> parseNumber(std::string_view text);

} // namespace simulator
