#pragma once

#include "fields.h"

#include <string>
#include <string_view>

namespace simulator {

/// The settings of one call, named without the prefix BRINDLECOVE_SIMULATOR_. The lines of the `faults` file
/// win over the environment, which a running application can no longer change for its children.
class Settings
{
public:
    explicit Settings(Fields lines)
        : m_lines(std::move(lines))
    {
    }

    /// The setting's text, empty when it is not set.
    [[nodiscard]] std::string text(std::string_view name) const;

    /// The setting's number; nothing when it is not set or is no whole number.
    [[nodiscard]] std::optional<unsigned long long> number(std::string_view name) const;

    [[nodiscard]] bool isOn(std::string_view name) const { return text(name) == "1"; }

private:
    Fields m_lines;
};

} // namespace simulator
