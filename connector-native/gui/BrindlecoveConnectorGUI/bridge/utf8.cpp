#include "bridge/utf8.h"

#include <array>

// Qt 6.4: QStringDecoder, even when it keeps a byte-order mark, gives one U+FFFD per byte of a truncated
// sequence.

namespace {

constexpr int firstNonAscii = 0x80;

// What may follow a lead byte. The bounds of the second byte alone rule out overlong forms, surrogates and
// everything above U+10FFFF; later bytes are any continuation byte.
struct Lead
{
    int trailing = 0;
    uchar secondLow = 0x80;
    uchar secondHigh = 0xBF;
};

struct LeadRange
{
    int first = 0;
    int last = 0;
    Lead lead;
};

// Unicode, chapter 3, table 3-7: well-formed byte sequences.
constexpr std::array leadRanges{
    LeadRange{0xC2, 0xDF, {1}}, LeadRange{0xE0, 0xE0, {2, 0xA0, 0xBF}},
    LeadRange{0xE1, 0xEC, {2}}, LeadRange{0xED, 0xED, {2, 0x80, 0x9F}},
    LeadRange{0xEE, 0xEF, {2}}, LeadRange{0xF0, 0xF0, {3, 0x90, 0xBF}},
    LeadRange{0xF1, 0xF3, {3}}, LeadRange{0xF4, 0xF4, {3, 0x80, 0x8F}},
};

using LeadTable = std::array<Lead, 0x100 - firstNonAscii>;

constexpr LeadTable buildLeads()
{
    LeadTable table{};
    for (const LeadRange &range : leadRanges) {
        for (int byte = range.first; byte <= range.last; ++byte) {
            table[static_cast<std::size_t>(byte - firstNonAscii)] = range.lead;
        }
    }
    return table;
}

constexpr LeadTable leads = buildLeads();

// The bytes still to be read and the place for the next UTF-16 unit.
struct Cursor
{
    const uchar *at;
    const uchar *end;
    char16_t *out;
};

void copyAscii(Cursor &cursor)
{
    while (cursor.at != cursor.end && *cursor.at < firstNonAscii) {
        *cursor.out++ = *cursor.at++;
    }
}

// Reads one non-ASCII character, or the longest ill-formed prefix of one.
char32_t takeCharacter(Cursor &cursor)
{
    const uchar first = *cursor.at++;
    Lead lead = leads[static_cast<std::size_t>(first - firstNonAscii)];
    if (lead.trailing == 0) {
        return QChar::ReplacementCharacter;
    }
    char32_t code = first & (0x3FU >> lead.trailing);
    for (; lead.trailing > 0; --lead.trailing) {
        if (cursor.at == cursor.end || *cursor.at < lead.secondLow || *cursor.at > lead.secondHigh) {
            return QChar::ReplacementCharacter;
        }
        code = code << 6U | (*cursor.at++ & 0x3FU);
        lead.secondLow = Lead{}.secondLow;
        lead.secondHigh = Lead{}.secondHigh;
    }
    return code;
}

void putCharacter(Cursor &cursor, char32_t code)
{
    if (!QChar::requiresSurrogates(code)) {
        *cursor.out++ = static_cast<char16_t>(code);
        return;
    }
    *cursor.out++ = QChar::highSurrogate(code);
    *cursor.out++ = QChar::lowSurrogate(code);
}

} // namespace

QString decodeUtf8(QByteArrayView bytes)
{
    // No byte ever yields more than one UTF-16 unit, so the text cannot outgrow the bytes.
    QString text(bytes.size(), Qt::Uninitialized);
    auto *const start = reinterpret_cast<char16_t *>(text.data());
    const auto *const input = reinterpret_cast<const uchar *>(bytes.data());
    Cursor cursor{input, input + bytes.size(), start};
    for (copyAscii(cursor); cursor.at != cursor.end; copyAscii(cursor)) {
        putCharacter(cursor, takeCharacter(cursor));
    }
    text.truncate(cursor.out - start);
    text.squeeze();
    return text;
}
