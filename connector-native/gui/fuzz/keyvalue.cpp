#include "exchanges/keyvaluelines.h"

#include "fuzzing.h"

#include <vector>

namespace {

std::vector<std::u16string> plainLines(const std::u16string &text)
{
    std::vector<std::u16string> lines(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i, 2) == u"\r\n") {
            lines.back() += u"\r\n";
            ++i;
        } else if (text[i] == u'\n') {
            lines.emplace_back();
        } else {
            lines.back() += text[i];
        }
    }
    return lines;
}

std::optional<QString> plainValue(const std::u16string &text, const std::u16string &key)
{
    const std::u16string prefix = key + u"=";
    for (const std::u16string &line : plainLines(text)) {
        if (line.compare(0, prefix.size(), prefix) == 0) {
            return QString::fromStdU16String(line.substr(prefix.size()));
        }
    }
    return std::nullopt;
}

void checkKeyValue(QByteArrayView input)
{
    const FuzzedTexts texts(input);
    const QString key = texts[0];
    const QString output = texts[1];
    demand(extractValue(output, key) == plainValue(output.toStdU16String(), key.toStdU16String()),
           "the first line with the key has the value");
}

const FuzzTarget keyValueTarget("keyvalue", checkKeyValue);

} // namespace
