#include "output/textrowstesting.h"
#include "support/testprogram.h"
#include "ui/output/textmoves.h"

#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace {

// Where the cursor comes to stand on its way through a text.
template <typename Step> QList<qsizetype> stops(const QString &text, qsizetype from, qsizetype to, Step step)
{
    const TextRows rows = wrapped(text);
    QList<qsizetype> result{from};
    while (result.last() != to && result.size() <= text.size() + 1) {
        result.append(step(rows, result.last()));
    }
    return result;
}

TextSelection afterEdit(const QString &before, const QString &after, TextSelection selection)
{
    return afterChange(selection, changeBetween(before, after));
}

} // namespace

// Where the text cursor of an output goes, and what becomes of a selection when the output changes.
class TestTextMoves : public QObject
{
    Q_OBJECT

private slots:
    void stepsOverWhatIsSeenAsOneCharacter_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<qsizetype>>("expected");
        QTest::newRow("letters") << u"abc"_s << QList<qsizetype>{0, 1, 2, 3};
        QTest::newRow("line feed") << u"a\nb"_s << QList<qsizetype>{0, 1, 2, 3};
        QTest::newRow("pair") << u"a\r\nb"_s << QList<qsizetype>{0, 1, 3, 4};
        QTest::newRow("carriage returns") << u"\r\r\r\n"_s << QList<qsizetype>{0, 1, 2, 4};
        QTest::newRow("surrogates") << u"a🔑b"_s << QList<qsizetype>{0, 1, 3, 4};
        QTest::newRow("accents") << u"e\u0301x"_s << QList<qsizetype>{0, 2, 3};
        QTest::newRow("NUL") << u"a"_s + QChar(u'\0') + u"b"_s << QList<qsizetype>{0, 1, 2, 3};
    }

    void stepsOverWhatIsSeenAsOneCharacter()
    {
        QFETCH(const QString, text);
        QFETCH(const QList<qsizetype>, expected);
        QCOMPARE(stops(text, 0, text.size(), nextCharacter), expected);
        QList<qsizetype> back = stops(text, text.size(), 0, previousCharacter);
        std::reverse(back.begin(), back.end());
        QCOMPARE(back, expected);
    }

    void stepsOverWords()
    {
        const QString text = u"one  two_3,\u00a0{x}\n\nend"_s;
        QCOMPARE(stops(text, 0, text.size(), nextWord),
                 QList<qsizetype>({0, 5, 10, 12, 13, 14, 15, 16, 17, 20}));
        QCOMPARE(stops(text, text.size(), 0, previousWord),
                 QList<qsizetype>({20, 17, 16, 15, 14, 13, 12, 10, 5, 0}));
        QCOMPARE(previousWord(wrapped(u"  one"_s), 2), 0);
    }

    void nothingIsBeyondTheEnds()
    {
        const TextRows rows = wrapped(u"one two"_s);
        QCOMPARE(previousCharacter(rows, 0), 0);
        QCOMPARE(previousWord(rows, 0), 0);
        QCOMPARE(nextCharacter(rows, 7), 7);
        QCOMPARE(nextWord(rows, 7), 7);
    }

    void leftIsLeftInALineFromRightToLeft()
    {
        const TextRows rows = wrapped(u"אבג\nabc"_s);
        QCOMPARE(moved(rows, 1, TextMove::Left), 2);
        QCOMPARE(moved(rows, 1, TextMove::Right), 0);
        QCOMPARE(moved(rows, 5, TextMove::Left), 4);
        QCOMPARE(moved(rows, 5, TextMove::Right), 6);
    }

    void theEndOfAWrappedRowIsInThatRow()
    {
        const QString text = u"abcdefghij"_s;
        const TextRows rows = wrapped(text, wrapped(text).xOf(0, 4));
        QCOMPARE(rows.count(), 3);
        QCOMPARE(moved(rows, 1, TextMove::RowEnd), 3);
        QCOMPARE(moved(rows, 5, TextMove::RowStart), 4);
        QCOMPARE(moved(rows, 9, TextMove::RowEnd), 10);
        QCOMPARE(moved(rows, 5, TextMove::LineStart), 0);
        QCOMPARE(moved(rows, 5, TextMove::LineEnd), 10);
    }

    void aLineEndsBeforeItsLineEnd()
    {
        const TextRows rows = wrapped(u"one\r\ntwo\n\nthree"_s);
        QCOMPARE(moved(rows, 1, TextMove::LineEnd), 3);
        QCOMPARE(moved(rows, 3, TextMove::LineEnd), 3);
        QCOMPARE(moved(rows, 6, TextMove::LineEnd), 8);
        QCOMPARE(moved(rows, 9, TextMove::LineEnd), 9);
        QCOMPARE(moved(rows, 12, TextMove::LineEnd), 15);
        QCOMPARE(moved(rows, 6, TextMove::LineStart), 5);
    }

    void aWordIsWhatIsBetweenBlanksAndMarks_data()
    {
        QTest::addColumn<qsizetype>("position");
        QTest::addColumn<QString>("word");
        QTest::newRow("key") << qsizetype(3) << u"bind_status"_s;
        QTest::newRow("mark") << qsizetype(11) << u"="_s;
        QTest::newRow("number") << qsizetype(12) << u"12"_s;
        QTest::newRow("blanks") << qsizetype(15) << u"  "_s;
        QTest::newRow("other letters") << qsizetype(17) << u"ключ"_s;
        QTest::newRow("line end") << qsizetype(20) << QString();
        QTest::newRow("end of the text") << qsizetype(22) << QString();
    }

    void aWordIsWhatIsBetweenBlanksAndMarks()
    {
        QFETCH(const qsizetype, position);
        const QString text = u"bind_status=12  ключ\nx"_s;
        const auto [start, end] = wordAt(text, position);
        QTEST(text.sliced(start, end - start), "word");
    }

    void aLineHasItsLineEnd()
    {
        const QString text = u"one\r\ntwo\n\nthree"_s;
        QCOMPARE(lineAt(text, 1), (TextRange{0, 5}));
        QCOMPARE(lineAt(text, 3), (TextRange{0, 5}));
        QCOMPARE(lineAt(text, 5), (TextRange{5, 9}));
        QCOMPARE(lineAt(text, 9), (TextRange{9, 10}));
        QCOMPARE(lineAt(text, 15), (TextRange{10, 15}));
    }

    void aSelectionStaysWithItsText()
    {
        const QString before = u"latency=18\nprotocol=v1\n"_s;
        // "protocol", whatever comes before it.
        QCOMPARE(afterEdit(before, u"latency=1234\nprotocol=v1\n"_s, {11, 19}), (TextSelection{13, 21}));
        QCOMPARE(afterEdit(before, u"latency=8\nprotocol=v1\n"_s, {19, 11}), (TextSelection{18, 10}));
        // "latency", whatever comes behind it.
        QCOMPARE(afterEdit(before, u"latency=20\n"_s, {0, 7}), (TextSelection{0, 7}));
        QCOMPARE(afterEdit(u"one"_s, u"one two"_s, {0, 3}), (TextSelection{0, 3}));
        // Right beside the change.
        QCOMPARE(afterEdit(before, u"latency=1234\nprotocol=v1\n"_s, {10, 19}), (TextSelection{12, 21}));
        QCOMPARE(afterEdit(before, u"latency=1234\nprotocol=v1\n"_s, {0, 9}), (TextSelection{0, 9}));
        // Around the change.
        QCOMPARE(afterEdit(before, u"latency=42\nprotocol=v1\n"_s, {0, 23}), (TextSelection{0, 23}));
        // What is no longer there is no longer selected.
        QVERIFY(afterEdit(before, u"down\n"_s, {2, 15}).isEmpty());
        QCOMPARE(afterEdit(before, QString(), {2, 15}), TextSelection());
        QVERIFY(afterEdit(u"one"_s, u"two"_s, {0, 3}).isEmpty());
    }

    void whereOneEndIsGoneTheCursorRemains()
    {
        const auto edited = [](TextSelection selection) {
            return afterEdit(u"abcdef"_s, u"abXYZef"_s, selection);
        };
        QCOMPARE(edited({3, 6}), (TextSelection{7, 7}));
        QCOMPARE(edited({3, 0}), (TextSelection{0, 0}));
        QCOMPARE(edited({0, 3}), (TextSelection{2, 2}));
        QCOMPARE(edited({6, 3}), (TextSelection{2, 2}));
    }
};

static const TestClass<TestTextMoves> testTextMoves("tst_textmoves");

#include "tst_textmoves.moc"
