#include "support/testprogram.h"
#include "ui/accessibility/accessibletext.h"
#include "ui/accessibility/textpieces.h"

#include <QtCore/qrandom.h>

#include <ctime>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array allKinds = {QAccessible::CharBoundary,     QAccessible::WordBoundary,
                                 QAccessible::SentenceBoundary, QAccessible::ParagraphBoundary,
                                 QAccessible::LineBoundary,     QAccessible::NoBoundary};

struct Answer
{
    QString text;
    int start = INT_MIN;
    int end = INT_MIN;
    friend bool operator==(const Answer &, const Answer &) = default;
};

char *toString(const Answer &answer)
{
    return QTest::toString(u"%1 to %2: '%3'"_s.arg(answer.start).arg(answer.end).arg(answer.text));
}

/// What an assistive technology is told of a text with the cursor at a position.
class GivenText : public AccessibleText
{
public:
    GivenText(QQuickItem &item, QString text, int cursor = 0)
        : AccessibleText(&item)
        , m_text(std::move(text))
    {
        item.setProperty("cursorPosition", cursor);
    }

    [[nodiscard]] Answer before(int offset, QAccessible::TextBoundaryType kind) const
    {
        Answer answer;
        answer.text = textBeforeOffset(offset, kind, &answer.start, &answer.end);
        return answer;
    }
    [[nodiscard]] Answer at(int offset, QAccessible::TextBoundaryType kind) const
    {
        Answer answer;
        answer.text = textAtOffset(offset, kind, &answer.start, &answer.end);
        return answer;
    }
    [[nodiscard]] Answer after(int offset, QAccessible::TextBoundaryType kind) const
    {
        Answer answer;
        answer.text = textAfterOffset(offset, kind, &answer.start, &answer.end);
        return answer;
    }

protected:
    [[nodiscard]] QString content() const override { return m_text; }

private:
    QString m_text;
};

/// Of words, line ends and whatever else a boundary may depend on.
QString randomText(QRandomGenerator &random)
{
    static const QStringList parts = {u"word"_s,    u" "_s,
                                      u"\n"_s,      u". "_s,
                                      u"42"_s,      u"••"_s,
                                      u"="_s,       u"\r"_s,
                                      u"e\u0301"_s, u"👩‍👩‍👧"_s,
                                      u"🇩🇪🇫🇷"_s,    u"שלום"_s,
                                      u"\u2028"_s,  u"\u0301"_s,
                                      u"ไทย"_s,     u"?!"_s,
                                      u"\u2400"_s,  QString(QChar(0xd83d)),
                                      u"  "_s,      u"don't"_s};
    QString text;
    for (int count = random.bounded(12); count > 0; --count)
        text += parts.at(random.bounded(parts.size()));
    return text;
}

} // namespace

// What an assistive technology is answered that asks for the pieces of a text.
class TestTextPieces : public QObject
{
    Q_OBJECT

    QQuickItem m_item;

private slots:
    void aPieceIsWhatLiesAroundTheOffset_data()
    {
        using enum QAccessible::TextBoundaryType;
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QStringList>("pieces");
        QTest::newRow("characters") << u"ae\u0301👩‍👧\n"_s << int(CharBoundary)
                                    << QStringList{u"a"_s, u"e\u0301"_s, u"👩‍👧"_s, u"\n"_s};
        QTest::newRow("words") << u"free = 12.5, don't\nlast"_s << int(WordBoundary)
                               << QStringList{u"free = "_s, u"12.5, "_s, u"don't\n"_s, u"last"_s};
        QTest::newRow("no word at the start")
            << u"- a b"_s << int(WordBoundary) << QStringList{u"- "_s, u"a "_s, u"b"_s};
        QTest::newRow("no word at all") << u"••••"_s << int(WordBoundary) << QStringList{u"••••"_s};
        QTest::newRow("sentences") << u"One. Two?\nThree"_s << int(SentenceBoundary)
                                   << QStringList{u"One. "_s, u"Two?\n"_s, u"Three"_s};
        QTest::newRow("paragraphs") << u"One. Two?\n\nThree\n"_s << int(ParagraphBoundary)
                                    << QStringList{u"One. Two?\n"_s, u"\n"_s, u"Three\n"_s};
        QTest::newRow("lines") << u"One\nTwo"_s << int(LineBoundary) << QStringList{u"One\n"_s, u"Two"_s};
        QTest::newRow("the whole") << u"One\nTwo"_s << int(NoBoundary) << QStringList{u"One\nTwo"_s};
    }

    void aPieceIsWhatLiesAroundTheOffset()
    {
        QFETCH(const QString, text);
        QFETCH(const int, kind);
        QFETCH(const QStringList, pieces);
        QCOMPARE(pieces.join(QString()), text);
        qsizetype start = 0;
        for (const QString &piece : pieces) {
            const TextRange expected{start, start + piece.size()};
            for (; start < expected.end; ++start)
                QCOMPARE(pieceAt(text, start, QAccessible::TextBoundaryType(kind)), expected);
        }
    }

    void atTheEndItIsTheLastPiece()
    {
        using enum QAccessible::TextBoundaryType;
        QCOMPARE(pieceAt(u"a b", 3, CharBoundary), (TextRange{3, 3}));
        QCOMPARE(pieceAt(u"a b", 3, WordBoundary), (TextRange{2, 3}));
        QCOMPARE(pieceAt(u"A. B", 4, SentenceBoundary), (TextRange{3, 4}));
        QCOMPARE(pieceAt(u"a\nb", 3, LineBoundary), (TextRange{2, 3}));
        QCOMPARE(pieceAt(u"a\nb\n", 4, LineBoundary), (TextRange{4, 4}));
        for (const auto kind : allKinds)
            QCOMPARE(pieceAt(u"", 0, kind), (TextRange{0, 0}));
    }

    // The random texts are the same in every run.
    void piecesLieSideBySideAndCoverTheText()
    {
        QRandomGenerator random(20240607);
        for (int round = 0; round < 2000; ++round) {
            const QString text = randomText(random);
            const GivenText given(m_item, text);
            const int size = static_cast<int>(text.size());
            for (const auto kind : allKinds) {
                for (int offset = 0; offset <= size; ++offset) {
                    const Answer before = given.before(offset, kind);
                    const Answer at = given.at(offset, kind);
                    const Answer after = given.after(offset, kind);
                    QVERIFY2(0 <= before.start && before.start <= before.end && before.end == at.start
                                 && at.start <= offset && offset <= at.end && at.end == after.start
                                 && after.start <= after.end && after.end <= size,
                             qPrintable(u"'%1' at %2"_s.arg(text).arg(offset)));
                    QVERIFY(offset == size || offset < at.end);
                    QCOMPARE(before.start == before.end, at.start == 0);
                    QCOMPARE(after.start == after.end, at.end == size);
                    for (const Answer &answer : {before, at, after})
                        QCOMPARE(answer.text, text.mid(answer.start, answer.end - answer.start));
                    if (before.end > 0)
                        QCOMPARE(given.at(before.end - 1, kind), before);
                    if (after.start < size)
                        QCOMPARE(given.at(after.start, kind), after);
                }
            }
        }
    }

    void anOffsetMayStandForTheCursorOrTheEnd()
    {
        const GivenText given(m_item, u"one two three"_s, 5);
        for (const auto kind : allKinds) {
            QCOMPARE(given.before(-1, kind), given.before(13, kind));
            QCOMPARE(given.at(-1, kind), given.at(13, kind));
            QCOMPARE(given.after(-1, kind), given.after(13, kind));
            QCOMPARE(given.before(-2, kind), given.before(5, kind));
            QCOMPARE(given.at(-2, kind), given.at(5, kind));
            QCOMPARE(given.after(-2, kind), given.after(5, kind));
        }
        QCOMPARE(given.at(-2, QAccessible::WordBoundary).text, u"two "_s);
    }

    void anOffsetOutsideMeansTheNearestOne()
    {
        const GivenText given(m_item, u"one two"_s, 5);
        for (const auto kind : allKinds) {
            for (const int far : {8, 1000, INT_MAX})
                QCOMPARE(given.at(far, kind), given.at(7, kind));
            for (const int far : {-3, INT_MIN})
                QCOMPARE(given.at(far, kind), given.at(0, kind));
        }
    }

    void aPartOfTheTextMayBeAskedForAnywhere()
    {
        const GivenText given(m_item, u"one two"_s);
        QCOMPARE(given.text(4, 7), u"two"_s);
        QCOMPARE(given.text(4, 70), u"two"_s);
        QCOMPARE(given.text(-5, 3), u"one"_s);
        QCOMPARE(given.text(7, 4), QString());
        QCOMPARE(given.text(70, 71), QString());
    }

    // Of a line that takes minutes to read, no piece takes longer to find than of a short one.
    void longLinesAreCutBehindBlanks()
    {
        constexpr qsizetype mebibyte = 1 << 20;
        const QString text = u"lorem ipsum "_s.repeated(mebibyte / 12);
        for (const qsizetype offset : {qsizetype(0), mebibyte / 2, text.size() - 1}) {
            const TextRange word = pieceAt(text, offset, QAccessible::WordBoundary);
            QCOMPARE(word.end - word.start, 6);
            QVERIFY(word.start <= offset && offset < word.end);
        }
        const QString noBlank = u"a"_s + u"😀"_s.repeated(mebibyte / 2);
        for (const qsizetype start : {1021, 1023, 1025, 100'001}) {
            for (const qsizetype offset : {start, start + 1})
                QCOMPARE(pieceAt(noBlank, offset, QAccessible::CharBoundary), (TextRange{start, start + 2}));
        }
    }

    void aSentenceOfJustTheLongestLengthIsAPiece()
    {
        const QString longest = u"ab "_s.repeated(341) + u'a';
        QCOMPARE(longest.size(), 1024);
        QCOMPARE(pieceAt(longest, 0, QAccessible::SentenceBoundary), (TextRange{0, 1024}));
        QCOMPARE(pieceAt(longest + u'b', 0, QAccessible::SentenceBoundary), (TextRange{0, 1023}));
        QCOMPARE(pieceAt(u' ' + QString(1024, u'a'), 0, QAccessible::SentenceBoundary), (TextRange{0, 1}));
    }

    void withoutABlankItIsCutAtTheLongestLength()
    {
        const auto first = [](const QString &text) {
            return pieceAt(text, 0, QAccessible::SentenceBoundary).end;
        };
        const QString letters(1023, u'a');
        QCOMPARE(first(letters + u"bc"_s), 1024);
        // Not between the two halves of a character.
        QCOMPARE(first(letters + u"😀bc"_s), 1025);
        QCOMPARE(pieceAt(letters + u"😀bc"_s, 1024, QAccessible::CharBoundary), (TextRange{1023, 1025}));
    }

    void aChangeIsFromTheFirstDifferenceToTheLast_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QList<qsizetype>>("change");
        const auto row = [](const char *name, const QString &before, const QString &after,
                            const QList<qsizetype> &change) {
            QTest::newRow(name) << before << after << change;
        };
        row("none", u"abc"_s, u"abc"_s, {3, 3, 3});
        row("typed into nothing", QString(), u"ab"_s, {0, 0, 2});
        row("all deleted", u"ab"_s, QString(), {0, 2, 0});
        row("typed in the middle", u"abef"_s, u"abcdef"_s, {2, 2, 4});
        row("deleted in the middle", u"abcdef"_s, u"abef"_s, {2, 4, 2});
        row("replaced by more", u"abcf"_s, u"abxyzf"_s, {2, 3, 5});
        row("one more of the same", u"aa"_s, u"aaa"_s, {2, 2, 3});
        row("one less of the same", u"aaa"_s, u"aa"_s, {2, 3, 2});
        row("all different", u"ab"_s, u"xyz"_s, {0, 2, 3});
    }

    void aChangeIsFromTheFirstDifferenceToTheLast()
    {
        QFETCH(const QString, before);
        QFETCH(const QString, after);
        QFETCH(const QList<qsizetype>, change);
        const TextChange found = changeBetween(before, after);
        QCOMPARE(QList({found.start, found.oldEnd, found.newEnd}), change);
    }

    // Counted in time of the processor: others may use it as well.
    void aLongTextIsAnsweredAtOnce()
    {
        constexpr int questions = 100;
        constexpr std::clock_t longest = 10 * CLOCKS_PER_SEC / 1000;
        const QString text = u"lorem ipsum "_s.repeated((1 << 20) / 12);
        const std::clock_t start = std::clock();
        for (int question = 0; question < questions; ++question)
            static_cast<void>(pieceAt(text, text.size() - 1, QAccessible::WordBoundary));
        const std::clock_t each = (std::clock() - start) / questions;
        QVERIFY2(each < longest, qPrintable(QString::number(each)));
    }
};

static const TestClass<TestTextPieces> testTextPieces("tst_textpieces");

#include "tst_textpieces.moc"
