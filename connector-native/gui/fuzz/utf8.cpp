#include "bridge/utf8.h"

#include "fuzzing.h"

#include <algorithm>

namespace {

// The code points between the two.
struct Interval
{
    char32_t first = 0;
    char32_t last = 0;
};

// What a sequence of this many bytes may stand for: nothing that a shorter one could, no surrogates.
constexpr Interval shortest[] = {{0, 0x7F}, {0x80, 0x7FF}, {0x800, 0xFFFF}, {0x10000, 0x10FFFF}};
constexpr Interval surrogates{0xD800, 0xDFFF};

int lengthFromLead(unsigned char lead)
{
    for (const int length : {2, 3, 4}) {
        const int marker = 0xFF00 >> length & 0xFF;
        const int markedBits = 0xFF00 >> (length + 1) & 0xFF;
        if ((lead & markedBits) == marker) {
            return length;
        }
    }
    return lead < 0x80 ? 1 : 0;
}

// The code points of all sequences that begin with these bytes, when those that are missing are anything.
Interval reachable(const std::basic_string<unsigned char> &start, int length)
{
    const char32_t leadBits = length == 1 ? start[0] : start[0] & (0xFFU >> (length + 1));
    Interval range{leadBits, leadBits};
    for (int i = 1; i < length; ++i) {
        const bool isThere = static_cast<std::size_t>(i) < start.size();
        const char32_t bits = isThere ? start[static_cast<std::size_t>(i)] & 0x3FU : 0;
        range = {range.first << 6U | bits, range.last << 6U | (isThere ? bits : 0x3FU)};
    }
    return range;
}

bool beginsACharacter(const std::basic_string<unsigned char> &start)
{
    const int length = lengthFromLead(start[0]);
    const bool isContinued =
        std::all_of(start.begin() + 1, start.end(), [](unsigned char byte) { return (byte & 0xC0) == 0x80; });
    if (length == 0 || !isContinued || start.size() > static_cast<std::size_t>(length)) {
        return false;
    }
    const Interval range = reachable(start, length);
    const Interval wanted = shortest[length - 1];
    const Interval possible{std::max(range.first, wanted.first), std::min(range.last, wanted.last)};
    const bool onlySurrogates = possible.first >= surrogates.first && possible.last <= surrogates.last;
    return possible.first <= possible.last && !onlySurrogates;
}

void append(std::u16string &text, char32_t code)
{
    if (code < 0x10000) {
        text += static_cast<char16_t>(code);
        return;
    }
    text += static_cast<char16_t>(0xD800 + (code - 0x10000) / 0x400);
    text += static_cast<char16_t>(0xDC00 + (code - 0x10000) % 0x400);
}

std::u16string plainDecode(std::basic_string<unsigned char> bytes)
{
    std::u16string text;
    while (!bytes.empty()) {
        std::size_t taken = 1;
        while (taken < bytes.size() && beginsACharacter(bytes.substr(0, taken + 1))) {
            ++taken;
        }
        const auto start = bytes.substr(0, taken);
        const bool isWhole =
            beginsACharacter(start) && taken == static_cast<std::size_t>(lengthFromLead(start[0]));
        const char32_t code = isWhole ? reachable(start, static_cast<int>(taken)).first : 0xFFFD;
        append(text, code);
        bytes.erase(0, taken);
    }
    return text;
}

void checkUtf8(QByteArrayView input)
{
    const QString text = decodeUtf8(input);
    demand(text.toStdU16String() == plainDecode({input.begin(), input.end()}),
           "the bytes mean what Unicode says");
    demand(text.isValidUtf16(), "a text has no half characters");
    const QByteArray again = text.toUtf8();
    demand(decodeUtf8(again) == text, "what was repaired once is well-formed");
}

const FuzzTarget utf8Target("utf8", checkUtf8);

} // namespace
