#include "fields.h"

#include <charconv>

namespace simulator {

namespace {

    void addLine(Fields &fields, std::string_view line)
    {
        const auto separator = line.find('=');
        if (separator == std::string_view::npos)
            return;
        fields.insert_or_assign(std::string(line.substr(0, separator)),
                                std::string(line.substr(separator + 1)));
    }

} // namespace

Fields parseFields(std::string_view text)
{
    Fields fields;
    while (!text.empty()) {
        const auto end = text.find('\n');
        addLine(fields, text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return fields;
}

std::string formatFields(const Fields &fields)
{
    std::string text;
    for (const auto &[name, value] : fields)
        text.append(name).append("=").append(value).append("\n");
    return text;
}

std::optional<std::string> valueOf(const Fields &fields, std::string_view name)
{
    const auto found = fields.find(name);
    return found == fields.end() ? std::nullopt : std::optional(found->second);
}

std::optional<unsigned long long> parseNumber(std::string_view text)
{
    unsigned long long number = 0;
    const char *end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stopped == end ? std::optional(number) : std::nullopt;
}

} // namespace simulator
