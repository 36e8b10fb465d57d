// utf8againsticu [STRIDE]: compares the UTF-8 decoder with ICU's on every STRIDE-th sequence of up to three
// bytes, and of four bytes that begin with the lead byte of a longer character. 1 compares all of them.

#include "bridge/utf8.h"

#include <unicode/ustring.h>

#include <QtCore/qtextstream.h>

#include <array>

namespace {

QString decodedByIcu(QByteArrayView bytes)
{
    std::array<UChar, 8> units{};
    int32_t length = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8WithSub(units.data(), static_cast<int32_t>(units.size()), &length, bytes.data(),
                         static_cast<int32_t>(bytes.size()), QChar::ReplacementCharacter, nullptr, &error);
    return U_SUCCESS(error) ? QString(reinterpret_cast<const QChar *>(units.data()), length) : QString();
}

// False when a sequence is decoded differently.
bool agrees(quint32 number, int length)
{
    std::array<char, 4> bytes{};
    for (int i = 0; i < length; ++i) {
        bytes.at(static_cast<std::size_t>(i)) = static_cast<char>(number >> (8 * (length - 1 - i)) & 0xFFU);
    }
    const QByteArrayView sequence(bytes.data(), length);
    if (decodeUtf8(sequence) == decodedByIcu(sequence)) {
        return true;
    }
    QTextStream(stderr) << "decoded differently: " << sequence.toByteArray().toHex(' ') << '\n';
    return false;
}

struct Numbers
{
    int length;
    quint64 first;
    quint64 last;
};

constexpr std::array all{
    Numbers{1, 0x00, 0xFF},
    Numbers{2, 0x0000, 0xFFFF},
    Numbers{3, 0x000000, 0xFFFFFF},
    Numbers{4, 0xC2000000, 0xF4FFFFFF},
};

} // namespace

int main(int argc, char *argv[])
{
    const quint64 stride = argc > 1 ? QByteArrayView(argv[1]).toULongLong() : 0;
    if (stride == 0) {
        QTextStream(stderr) << "usage: utf8againsticu STRIDE\n";
        return 2;
    }
    quint64 compared = 0;
    for (const Numbers &numbers : all) {
        for (quint64 number = numbers.first; number <= numbers.last; number += stride, ++compared) {
            if (!agrees(static_cast<quint32>(number), numbers.length)) {
                return 1;
            }
        }
    }
    QTextStream(stdout) << compared << " sequences are decoded as by ICU\n";
    return 0;
}
