#include "settings.h"

#include <cstdlib>

namespace simulator {

namespace {

    [[nodiscard]] std::string environmentText(std::string_view name)
    {
        const char *value = std::getenv(std::string("BRINDLECOVE_SIMULATOR_").append(name).c_str());
        return value ? value : "";
    }

} // namespace

std::string Settings::text(std::string_view name) const
{
    const auto line = valueOf(m_lines, name);
    return line ? *line : environmentText(name);
}

std::optional<unsigned long long> Settings::number(std::string_view name) const
{
    return parseNumber(text(name));
}

} // namespace simulator
