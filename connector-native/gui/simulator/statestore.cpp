#include "statestore.h"

#include "files.h"

#include <cstdio>
#include <cstdlib>

namespace simulator {

namespace {

    [[nodiscard]] std::string jsonCharacter(char character)
    {
        static constexpr std::string_view digits = "0123456789abcdef";
        if (character == '"' || character == '\\')
            return {'\\', character};
        const auto code = static_cast<unsigned char>(character);
        if (code >= 0x20)
            return {character};
        return std::string("\\u00").append({digits[code / 16], digits[code % 16]});
    }

    [[nodiscard]] std::string jsonText(std::string_view text)
    {
        std::string quoted = "\"";
        for (const char character : text)
            quoted += jsonCharacter(character);
        return quoted + '"';
    }

    [[nodiscard]] std::string jsonArray(std::span<const std::string_view> texts)
    {
        std::string array = "[";
        for (const auto text : texts)
            array.append(array.size() > 1 ? "," : "").append(jsonText(text));
        return array + ']';
    }

} // namespace

StateStore::StateStore(std::string directory)
    : m_directory(std::move(directory))
{
    makePrivateDirectory(pathOf("vault"));
}

std::string StateStore::configuredDirectory()
{
    const char *named = std::getenv("BRINDLECOVE_SIMULATOR_STATE");
    return named && *named ? named : SIMULATOR_STATE_DIRECTORY;
}

Fields StateStore::read(std::string_view name) const
{
    const auto content = readFile(pathOf(name));
    return content ? parseFields(*content) : Fields();
}

bool StateStore::write(std::string_view name, const Fields &fields) const
{
    return replaceFile(pathOf(name), formatFields(fields));
}

bool StateStore::remove(std::string_view name) const
{
    return removeFile(pathOf(name));
}

std::string StateStore::pathOf(std::string_view name) const
{
    return std::string(m_directory).append("/").append(name);
}

void StateStore::recordCall(std::span<const std::string_view> arguments) const
{
    if (!appendToFile(pathOf("calls.log"), jsonArray(arguments) + '\n'))
        std::perror("simulator: calls.log");
}

} // namespace simulator
