#include "bridge/utf8.h"
#include "support/testprogram.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr char16_t replaced = QChar::ReplacementCharacter;

struct Step
{
    char32_t code;
    qsizetype length;
};

qsizetype nominalLength(uchar first)
{
    return first < 0x80 ? 1 : first < 0xC0 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF8 ? 4 : 0;
}

bool isScalarOfLength(char32_t code, qsizetype length)
{
    constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code >= smallest[static_cast<std::size_t>(length)] && code <= 0x10FFFF && !surrogate;
}

// The scalar value of a sequence of which only some bytes are taken, the others being `filler`.
char32_t assemble(QByteArrayView bytes, qsizetype taken, qsizetype length, uchar filler)
{
    char32_t code = static_cast<uchar>(bytes[0]) & (0x7FU >> length);
    for (qsizetype i = 1; i < length; ++i) {
        code = code << 6U | ((i < taken ? static_cast<uchar>(bytes[i]) : filler) & 0x3FU);
    }
    return code;
}

// Whether some continuation of these bytes is well-formed; the lowest or the highest one then is.
bool canBeCompleted(QByteArrayView bytes, qsizetype taken, qsizetype length)
{
    return isScalarOfLength(assemble(bytes, taken, length, 0x80), length)
        || isScalarOfLength(assemble(bytes, taken, length, 0xBF), length);
}

// The definition itself, slowly: the longest start of a well-formed sequence is one character.
Step naiveStep(QByteArrayView bytes)
{
    const qsizetype length = nominalLength(static_cast<uchar>(bytes[0]));
    if (length == 1) {
        return {static_cast<uchar>(bytes[0]), 1};
    }
    if (length == 0 || !canBeCompleted(bytes, 1, length)) {
        return {replaced, 1};
    }
    qsizetype taken = 1;
    while (taken < length && taken < bytes.size() && (static_cast<uchar>(bytes[taken]) & 0xC0U) == 0x80U
           && canBeCompleted(bytes, taken + 1, length)) {
        ++taken;
    }
    return {taken == length ? assemble(bytes, length, length, 0) : replaced, taken};
}

QString naiveDecode(QByteArrayView bytes)
{
    QString text;
    text.reserve(bytes.size());
    while (!bytes.isEmpty()) {
        const Step step = naiveStep(bytes);
        text += QChar::fromUcs4(step.code);
        bytes = bytes.sliced(step.length);
    }
    return text;
}

// The bytes around which the rules change.
constexpr std::array<uchar, 26> edges{0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF,
                                      0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xEC, 0xED, 0xEE,
                                      0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xF8, 0xFF};

// Every sequence of the given bytes and one more, each followed by a letter so that they do not meet.
QByteArray withEveryLastByte(QByteArrayView start)
{
    QByteArray all;
    for (int last = 0; last <= 0xFF; ++last) {
        all += start;
        all += static_cast<char>(last);
        all += 'A';
    }
    return all;
}

// The bytes in hexadecimal if they are decoded otherwise than defined.
QByteArray wronglyDecoded(QByteArrayView bytes)
{
    return decodeUtf8(bytes) == naiveDecode(bytes) ? QByteArray() : bytes.toByteArray().toHex();
}

QString text(std::initializer_list<char16_t> units)
{
    QString result;
    for (const char16_t unit : units) {
        result += QChar(unit);
    }
    return result;
}

} // namespace

class TestUtf8 : public QObject
{
    Q_OBJECT

private slots:
    void decodes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected");

        QTest::newRow("nothing") << QByteArray() << QString();
        QTest::newRow("ASCII") << "status=ready\n"_ba << u"status=ready\n"_s;
        QTest::newRow("two, three and four bytes") << "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"_ba << u"ä€😀"_s;
        QTest::newRow("byte-order mark is kept") << "\xEF\xBB\xBF"
                                                    "a"_ba
                                                 << text({0xFEFF, u'a'});
        QTest::newRow("byte-order mark alone is kept") << "\xEF\xBB\xBF"_ba << text({0xFEFF});
        QTest::newRow("NULs are kept") << "a\0b\0"_ba << text({u'a', 0, u'b', 0});
        QTest::newRow("CR LF is kept") << "a\r\nb\n"_ba << u"a\r\nb\n"_s;
        QTest::newRow("noncharacters are kept") << "\xEF\xBF\xBF\xEF\xB7\x90"_ba << text({0xFFFF, 0xFDD0});
        QTest::newRow("an encoded U+FFFD is one") << "\xEF\xBF\xBD"_ba << text({replaced});
        QTest::newRow("truncated three bytes before ASCII are one")
            << "\xE2\x82\x41"_ba << text({replaced, u'A'});
        QTest::newRow("truncated two bytes at the end are one") << "a\xC3"_ba << text({u'a', replaced});
        QTest::newRow("truncated three bytes at the end are one") << "\xE2\x82"_ba << text({replaced});
        QTest::newRow("truncated four bytes at the end are one") << "\xF0\x9F\x98"_ba << text({replaced});
        QTest::newRow("truncated sequence before another one")
            << "\xF0\x9F\x98\xC3\xA4"_ba << text({replaced, u'ä'});
        QTest::newRow("truncated four bytes twice are two")
            << "\xF1\x80\x80\xE1\x80\xC2"_ba << text({replaced, replaced, replaced});
        QTest::newRow("overlong slash in two bytes is two") << "\xC0\xAF"_ba << text({replaced, replaced});
        QTest::newRow("overlong three bytes are three")
            << "\xE0\x80\xBF"_ba << text({replaced, replaced, replaced});
        QTest::newRow("overlong four bytes are four")
            << "\xF0\x80\x80\x80"_ba << text({replaced, replaced, replaced, replaced});
        QTest::newRow("surrogate is three") << "\xED\xA0\x80"_ba << text({replaced, replaced, replaced});
        QTest::newRow("last scalar value before the surrogates") << "\xED\x9F\xBF"_ba << text({0xD7FF});
        QTest::newRow("first scalar value behind the surrogates") << "\xEE\x80\x80"_ba << text({0xE000});
        QTest::newRow("last scalar value") << "\xF4\x8F\xBF\xBF"_ba << text({0xDBFF, 0xDFFF});
        QTest::newRow("above the last scalar value is four")
            << "\xF4\x90\x80\x80"_ba << text({replaced, replaced, replaced, replaced});
        QTest::newRow("lone continuation bytes are one each") << "\x80"
                                                                 "a\xBF"_ba
                                                              << text({replaced, u'a', replaced});
        QTest::newRow("continuation byte too many") << "\xC3\xA4\xA4"_ba << text({u'ä', replaced});
        QTest::newRow("bytes that never occur")
            << "\xF5\xF8\xFE\xFF"_ba << text({replaced, replaced, replaced, replaced});
        QTest::newRow("table 3-8 of the standard, non-shortest forms")
            << "\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41"_ba
            << text({replaced, replaced, replaced, replaced, replaced, replaced, replaced, replaced, u'A'});
        QTest::newRow("table 3-10 of the standard, other ill-formed sequences")
            << "\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42"_ba
            << text({replaced, replaced, replaced, replaced, replaced, u'A', replaced, replaced, u'B'});
        QTest::newRow("table 3-11 of the standard, truncated sequences")
            << "\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41"_ba
            << text({replaced, replaced, replaced, replaced, u'A'});
    }

    void decodes()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expected);
        QCOMPARE(decodeUtf8(bytes), expected);
        QCOMPARE(naiveDecode(bytes), expected);
    }

    // Long runs of ASCII are copied by the block; a byte in any place of a block must end the run there.
    void anyAlignmentOfOneIllFormedByte()
    {
        for (qsizetype length = 1; length <= 40; ++length) {
            for (qsizetype place = 0; place < length; ++place) {
                QByteArray bytes(length, 'x');
                QString expected(length, u'x');
                bytes[place] = '\xFF';
                expected[place] = QChar(replaced);
                QCOMPARE(decodeUtf8(bytes), expected);
            }
        }
    }

    // Also at the end of the bytes, and before blocks of every length.
    void illFormedPrefixesInAnyPlaceAsDefined()
    {
        const QByteArrayList prefixes{"\xC3",         "\xE2",         "\xE2\x82",     "\xF0",
                                      "\xF0\x9F",     "\xF0\x9F\x98", "\xE0\x9F",     "\xED\xA0",
                                      "\xF4\x90\x80", "\xE2\xE2\x82", "\xF0\x90\x80", "\xE0\xA0"};
        for (const QByteArray &prefix : prefixes) {
            for (qsizetype before = 0; before <= 40; ++before) {
                for (qsizetype after = 0; after <= 40; ++after) {
                    const QByteArray bytes = QByteArray(before, 'x') + prefix + QByteArray(after, 'y');
                    QCOMPARE(wronglyDecoded(bytes), QByteArray());
                }
            }
        }
    }

    void everyShortSequenceAsDefined()
    {
        QCOMPARE(wronglyDecoded(withEveryLastByte({})), QByteArray());
        // A single character before them says nothing new about the sequences of two bytes.
        for (int first = 'A'; first <= 0xFF; first = std::max(first + 1, 0x80)) {
            std::array start{static_cast<char>(first), '\0'};
            QCOMPARE(wronglyDecoded(withEveryLastByte(QByteArrayView(start).first(1))), QByteArray());
            for (int second = 0; second <= 0xFF; ++second) {
                start[1] = static_cast<char>(second);
                QCOMPARE(wronglyDecoded(withEveryLastByte(start)), QByteArray());
            }
        }
    }

    void everyTruncatedSequenceAsDefined()
    {
        for (char16_t value = 0xFFFF; value > 0; --value) {
            const std::array bytes{static_cast<char>(value >> 8U), static_cast<char>(value)};
            QCOMPARE(wronglyDecoded(bytes), QByteArray());
        }
    }

    void fourByteSequencesAsDefined()
    {
        for (int first = 0xF0; first <= 0xF8; ++first) {
            for (const uchar second : edges) {
                for (const uchar third : edges) {
                    const std::array start{static_cast<char>(first), static_cast<char>(second),
                                           static_cast<char>(third)};
                    QCOMPARE(wronglyDecoded(withEveryLastByte(start)), QByteArray());
                }
            }
        }
    }

    // Six bytes in a row, chosen by a fixed linear congruence, so that sequences meet one another.
    void sequencesOfEdgesAsDefined()
    {
        quint32 state = 1;
        for (int round = 0; round < 200'000; ++round) {
            QByteArray bytes(6, '\0');
            for (char &byte : bytes) {
                state = state * 1664525U + 1013904223U;
                byte = static_cast<char>(edges[(state >> 16U) % edges.size()]);
            }
            QCOMPARE(wronglyDecoded(bytes), QByteArray());
        }
    }

    void readsNothingBehindTheBytes()
    {
        const QByteArray bytes = "abcdefg\xF0\x9F\x98\x80"_ba;
        for (qsizetype end = 8; end < bytes.size(); ++end) {
            QCOMPARE(decodeUtf8(QByteArrayView(bytes).first(end)), u"abcdefg\uFFFD"_s);
        }
    }

    void everyScalarValueSurvives()
    {
        QString all;
        for (char32_t code = 0; code <= 0x10FFFF; ++code) {
            if (!QChar::isSurrogate(code)) {
                all += QChar::fromUcs4(code);
            }
        }
        QVERIFY(decodeUtf8(all.toUtf8()) == all);
    }

    // Outputs are kept as long as the window is open.
    void aTextTakesNoMoreMemoryThanItNeeds()
    {
        const QByteArray bytes = "\xF0\x9F\x98\x80"_ba.repeated(10'000);
        const QString text = decodeUtf8(bytes);
        QVERIFY(text.capacity() < bytes.size() * 3 / 4);
    }

    void aMegabyteIsQuick_data()
    {
        QTest::addColumn<QByteArray>("piece");
        QTest::newRow("ASCII") << "a"_ba;
        QTest::newRow("mixed") << "value=\xE2\x82\xAC\n"_ba;
        QTest::newRow("four bytes") << "\xF0\x9F\x98\x80"_ba;
        QTest::newRow("ill-formed") << "\xFF"_ba;
    }

    void aMegabyteIsQuick()
    {
        QFETCH(QByteArray, piece);
        const QByteArray bytes = piece.repeated((1 << 20) / piece.size());
        QString decoded;
        QBENCHMARK
        {
            decoded = decodeUtf8(bytes);
        }
        QCOMPARE(decoded.size(), naiveDecode(piece).size() * (bytes.size() / piece.size()));
    }
};

static const TestClass<TestUtf8> testUtf8("tst_utf8");

#include "tst_utf8.moc"
