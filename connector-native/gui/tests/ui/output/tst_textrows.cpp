#include "output/textrowstesting.h"
#include "support/testprogram.h"
#include "ui/output/textmoves.h"

#include <QtCore/qrandom.h>
#include <QtGui/qfontdatabase.h>
#include <QtGui/qpainter.h>
#include <QtGui/qtextlayout.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace {

QStringList shown(const TextRows &rows)
{
    QStringList result;
    for (qsizetype row = 0; row < rows.count(); ++row) {
        result.append(rows.text().sliced(rows.start(row), rows.end(row) - rows.start(row)));
    }
    return result;
}

qreal columnWidth()
{
    return wrapped(u"0123456789"_s, 0).xOf(0, 10) / 10;
}

// Pieces that texts are made of which break what counts characters, lines or columns wrongly.
const QStringList &pieces()
{
    static const QStringList all{u"word"_s,
                                 u" "_s,
                                 u"  \t"_s,
                                 u"\n"_s,
                                 u"\r\n"_s,
                                 u"\r"_s,
                                 u"\u2028"_s,
                                 u"\u2029"_s,
                                 u"\u00a0"_s,
                                 u"{\"key\":\"value\",\"list\":[1,2.5,-3]},"_s,
                                 u"a-very-long-word-without-any-blank/in_it/that=never&ends"_s,
                                 QString(QChar(u'\0')),
                                 u"\u0001\u007f\u0085\u000b"_s,
                                 u"שלום עולם"_s,
                                 u"مرحبا"_s,
                                 u"ключ"_s,
                                 u"钥匙"_s,
                                 u"🔑"_s,
                                 u"👩‍👩‍👧‍👦"_s,
                                 u"e\u0301\u0302"_s,
                                 u"\u202e"_s,
                                 u"\u2067"_s,
                                 u"\u200b"_s,
                                 u"\ufeff\ufffc"_s,
                                 QString(QChar(0xd83d)),
                                 QString(QChar(0xdc0b))};
    return all;
}

QString randomText(QRandomGenerator &random, int length)
{
    QString text;
    for (int piece = 0; piece < length; ++piece) {
        text += pieces().at(static_cast<qsizetype>(random() % static_cast<unsigned>(pieces().size())));
    }
    return text;
}

bool isLeftToRight(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar character) { return character < u'\u0590'; });
}

// Of a few pieces, of some hundred, and longer than is laid out at once.
int randomLength(QRandomGenerator &random, int round)
{
    constexpr std::array longest{6u, 60u, 1500u};
    return static_cast<int>(random() % longest.at(static_cast<std::size_t>(round) % longest.size()));
}

} // namespace

// Where the rows of an output begin, and where in them its characters are.
class TestTextRows : public QObject
{
    Q_OBJECT

private slots:
    void linesAreRows_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("empty") << QString() << QStringList{u""_s};
        QTest::newRow("one line") << u"one"_s << QStringList{u"one"_s};
        QTest::newRow("two") << u"one\ntwo"_s << QStringList{u"one"_s, u"two"_s};
        QTest::newRow("a line end at the end") << u"one\n"_s << QStringList{u"one"_s, u""_s};
        QTest::newRow("empty lines") << u"\n\n"_s << QStringList{u""_s, u""_s, u""_s};
        QTest::newRow("pairs") << u"a\r\nb\r\n"_s << QStringList{u"a"_s, u"b"_s, u""_s};
        QTest::newRow("carriage returns") << u"a\rb\r\rc"_s << QStringList{u"a"_s, u"b"_s, u""_s, u"c"_s};
        QTest::newRow("separators") << u"a\u2028b\u2029c"_s << QStringList{u"a"_s, u"b"_s, u"c"_s};
    }

    void linesAreRows()
    {
        QFETCH(const QString, text);
        QTEST(shown(wrapped(text, 1000)), "rows");
    }

    void rowsBreakBetweenWordsOrElseAnywhere_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("words") << u"one two three"_s << QStringList{u"one two "_s, u"three"_s};
        QTest::newRow("as wide as a row") << u"one two, three"_s << QStringList{u"one two, "_s, u"three"_s};
        QTest::newRow("blanks do not wrap")
            << u"one two        x"_s << QStringList{u"one two        "_s, u"x"_s};
        QTest::newRow("a long word") << u"abcdefghijklm"_s << QStringList{u"abcdefgh"_s, u"ijklm"_s};
        QTest::newRow("a long word later")
            << u"a bcdefghijklm"_s << QStringList{u"a "_s, u"bcdefghi"_s, u"jklm"_s};
        QTest::newRow("lists") << u"{\"a\":1},{\"b\":2}"_s << QStringList{u"{\"a\":1},"_s, u"{\"b\":2}"_s};
        QTest::newRow("a tabulator") << u"a\tb c"_s << QStringList{u"a\t"_s, u"b c"_s};
    }

    void rowsBreakBetweenWordsOrElseAnywhere()
    {
        QFETCH(const QString, text);
        QTEST(shown(wrapped(text, columnWidth() * 8)), "rows");
    }

    void aTabulatorThatIsWiderThanTheRowsIsARow()
    {
        QCOMPARE(shown(wrapped(u"\tabc"_s, columnWidth() * 4)), QStringList({u"\t"_s, u"abc"_s}));
    }

    void eachRowHasACharacterHoweverNarrow()
    {
        for (const qreal columns : {0.5, 1.0, 1.5}) {
            QCOMPARE(shown(wrapped(u"abc"_s, columnWidth() * columns)),
                     QStringList({u"a"_s, u"b"_s, u"c"_s}));
        }
    }

    void textWrapsAsALayoutWrapsIt_data()
    {
        QTest::addColumn<QFont>("font");
        QTest::addColumn<QString>("word");
        const QFont proportional = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
        QTest::newRow("by columns") << fixedFont() << u"word "_s;
        QTest::newRow("other letters") << fixedFont() << u"ключ "_s;
        QTest::newRow("letters that differ in width") << proportional << u"word "_s;
    }

    // What is taken apart by columns, or block by block, is what a layout of the whole makes of it.
    void textWrapsAsALayoutWrapsIt()
    {
        QFETCH(const QFont, font);
        QFETCH(const QString, word);
        QRandomGenerator random(1);
        const QStringList words{word,        u"a,b "_s,       u"{\"key\":\"value\"},"_s, u"1.5 "_s,
                                u"x-y/z "_s, u"longerword"_s, u"(in brackets) "_s,       u"  "_s,
                                u"50% "_s,   u"key=value "_s};
        for (int round = 0; round < 200; ++round) {
            QString text;
            for (int count = round % 20 == 0 ? 1000 : 60; count > 0; --count) {
                text += words.at(static_cast<qsizetype>(random() % static_cast<unsigned>(words.size())));
            }
            const qreal width = columnWidth() * (10 + static_cast<int>(random() % 80));
            QTextLayout layout(text, font);
            QTextOption option;
            option.setUseDesignMetrics(true);
            option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
            layout.setTextOption(option);
            layout.beginLayout();
            QStringList expected;
            for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
                line.setLineWidth(width);
                expected.append(text.sliced(line.textStart(), line.textLength()));
            }
            layout.endLayout();
            QCOMPARE(shown(wrapped(text, width, font)), expected);
        }
    }

    // Whatever its height, and the device pixel ratio.
    void aRowIsDrawnAsALayoutDrawsIt()
    {
        const QString text = u"{\"key\": 1.5, != -> ffi ~|` AVToWA.}"_s;
        QTextLayout layout(text, fixedFont());
        QTextOption option;
        option.setUseDesignMetrics(true);
        layout.setTextOption(option);
        layout.beginLayout();
        layout.createLine().setLineWidth(1000);
        layout.endLayout();
        const TextRows rows = wrapped(text, 1000);
        for (const qreal ratio : {1.0, 1.1, 1.25, 1.5, 2.0, 3.0}) {
            for (const qreal y : {0.0, 7.5, rows.rowHeight(), 2 * rows.rowHeight()}) {
                const QPointF place(0, y);
                const auto drawn = [&](const auto &draw) {
                    QImage image((QSizeF(400, 60) * ratio).toSize(), QImage::Format_RGB32);
                    image.fill(Qt::white);
                    image.setDevicePixelRatio(ratio);
                    QPainter painter(&image);
                    painter.setPen(QColor(30, 60, 90));
                    draw(painter);
                    return image;
                };
                const QImage expected = drawn([&](QPainter &painter) { layout.draw(&painter, place); });
                const QImage blank = drawn([](QPainter &) {});
                QVERIFY(expected != blank);
                QCOMPARE(drawn([&](QPainter &painter) { rows.draw(painter, 0, place); }), expected);
            }
        }
    }

    void rowsCoverTheText()
    {
        QRandomGenerator random(2);
        for (int round = 0; round < 120; ++round) {
            const QString text = randomText(random, randomLength(random, round));
            const TextRows rows = wrapped(text, 30 + static_cast<int>(random() % 600));
            QCOMPARE(rows.start(0), 0);
            for (qsizetype row = 0; row < rows.count(); ++row) {
                QVERIFY(rows.start(row) <= rows.end(row) && rows.end(row) <= rows.next(row));
                QVERIFY(rows.next(row) > rows.start(row) || row + 1 == rows.count());
                QCOMPARE(rows.next(row) - rows.end(row), lineEndAt(text, rows.end(row)));
                QCOMPARE(rows.rowOf(rows.start(row)), row);
            }
            QCOMPARE(rows.next(rows.count() - 1), text.size());
        }
    }

    void everyPositionIsFoundWhereItIsShown()
    {
        QRandomGenerator random(3);
        for (int round = 0; round < 60; ++round) {
            // What a control character looks like, and how wide, is the font's to say.
            QString text = randomText(random, randomLength(random, round % 2));
            text.removeIf([](QChar character) {
                return character.category() == QChar::Other_Control && !character.isSpace();
            });
            text.remove(u'\u0085').remove(u'\u000b');
            const qreal width = 60 + static_cast<int>(random() % 600);
            const TextRows rows = wrapped(text, width);
            for (qsizetype position = 0; position < text.size(); position = nextCharacter(rows, position)) {
                const qsizetype row = rows.rowOf(position);
                const qreal x = rows.xOf(row, position);
                QVERIFY(0 <= x && x <= width);
                // A little inside the character that follows: a pointer is never exactly between two.
                const qsizetype found = rows.positionAt(row, x + 0.5);
                QVERIFY(rows.start(row) <= found && found <= rows.end(row));
                // Where two directions meet, one position is at two places.
                const qsizetype line = lineAt(text, position).start;
                if (isLeftToRight(QStringView(text).sliced(line, rows.end(row) - line))) {
                    QVERIFY2(std::abs(rows.xOf(row, found) - x) < 0.1,
                             qPrintable(QString::number(position) + u' ' + text));
                }
            }
        }
    }

    void theCharactersOfARowFillIt()
    {
        const auto widthOf = [](const std::vector<RowSpan> &spans) {
            qreal width = 0;
            for (const RowSpan &span : spans) {
                width += span.right - span.left;
            }
            return width;
        };
        QRandomGenerator random(4);
        for (int round = 0; round < 60; ++round) {
            const QString text = randomText(random, randomLength(random, round % 2));
            const TextRows rows = wrapped(text, 400);
            for (qsizetype row = 0; row < rows.count(); ++row) {
                const std::vector<RowSpan> all = rows.spans(row, rows.start(row), rows.end(row));
                qreal ofCharacters = 0;
                for (qsizetype position = rows.start(row); position < rows.end(row);
                     position = nextCharacter(rows, position)) {
                    ofCharacters += widthOf(rows.spans(row, position, nextCharacter(rows, position)));
                }
                QVERIFY(all.empty() || (all.front().left >= 0 && all.back().right <= 400));
                // To a pixel: a sign that two characters share counts for both.
                QVERIFY2(ofCharacters >= widthOf(all) - 1, qPrintable(text));
            }
        }
    }

    void noRowIsWiderThanTheText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("left to right") << u"many words in a line "_s.repeated(20);
        QTest::newRow("right to left") << u"שלום עולם טוב "_s.repeated(20);
        QTest::newRow("with many blanks") << u"שלום עולם              "_s.repeated(20);
        QTest::newRow("both") << u"שלום one עולם two "_s.repeated(20);
        QTest::newRow("long and wide") << u"钥匙 key "_s.repeated(600);
    }

    void noRowIsWiderThanTheText()
    {
        QFETCH(const QString, text);
        const TextRows rows = wrapped(text, 205);
        QVERIFY(rows.count() > 5);
        for (qsizetype row = 0; row < rows.count(); ++row) {
            const std::vector<RowSpan> all = rows.spans(row, rows.start(row), rows.end(row));
            QVERIFY(std::abs(all.front().left) < 1);
            QVERIFY(all.back().right <= 205);
            for (qsizetype position = rows.start(row); position < rows.end(row); ++position) {
                QVERIFY(text[position] == u' ' || !rows.spans(row, position, position + 1).empty());
            }
        }
    }

    void tabulatorsStopEveryEightColumns()
    {
        const TextRows rows = wrapped(u"\ta\n1234567\ta\n12345678\ta\nאב\tג"_s, 1000);
        const qreal column = columnWidth();
        QCOMPARE(rows.xOf(0, 1), 8 * column);
        QCOMPARE(rows.xOf(1, rows.start(1) + 8), 8 * column);
        QCOMPARE(rows.xOf(2, rows.start(2) + 9), 16 * column);
        // From right to left it is at the left of the letters before it.
        const qsizetype start = rows.start(3);
        const std::vector<RowSpan> before = rows.spans(3, start, start + 2);
        const std::vector<RowSpan> tabulator = rows.spans(3, start + 2, start + 3);
        QCOMPARE(before.size(), 1U);
        QCOMPARE(tabulator.size(), 1U);
        QVERIFY(std::abs(tabulator[0].right - before[0].left) < 0.1);
        QCOMPARE(rows.spans(3, start, start + 4).size(), 1U);
    }

    void aLineEndThatIsSelectedIsSeen()
    {
        const qreal column = columnWidth();
        for (const qreal width : {0.0, 1000.0}) {
            const TextRows rows = wrapped(u"ab\n\ncd"_s, width);
            QCOMPARE(rows.spans(0, 1, 3), (std::vector<RowSpan>{{column, 3 * column}}));
            QCOMPARE(rows.spans(1, 3, 4), (std::vector<RowSpan>{{0, column}}));
            QCOMPARE(rows.spans(2, 4, 6), (std::vector<RowSpan>{{0, 2 * column}}));
            QCOMPARE(rows.spans(2, 0, 4), std::vector<RowSpan>());
        }
    }

    void eachLineHasItsOwnDirection()
    {
        const TextRows rows = wrapped(u"abc\nאבג\n123\nabc אבג\nאבג abc"_s, 1000);
        QList<bool> rightToLeft;
        for (qsizetype row = 0; row < rows.count(); ++row) {
            rightToLeft.append(rows.isRightToLeft(row));
            // All begin at the left.
            QVERIFY(std::abs(rows.spans(row, rows.start(row), rows.end(row)).at(0).left) < 0.1);
        }
        QCOMPARE(rightToLeft, QList({false, true, false, false, true}));
        QVERIFY(rows.xOf(1, rows.start(1)) > rows.xOf(1, rows.end(1)));
    }

    void aFirstLineFromTheRightMovesNoOther()
    {
        const TextRows rows = wrapped(u"אבג\nabc\nabc אבג\n123"_s, 1000);
        for (qsizetype row = 1; row < rows.count(); ++row) {
            QCOMPARE(rows.xOf(row, rows.start(row)), 0.0);
        }
    }

    void hugeTextsOfAnyKindHaveRows_data()
    {
        QTest::addColumn<QString>("text");
        constexpr int size = 200'000;
        QTest::newRow("one word") << QString(size, u'x');
        QTest::newRow("blanks") << QString(size, u' ');
        QTest::newRow("tabulators") << QString(size, u'\t');
        QTest::newRow("accents") << QString(size, QChar(0x301));
        QTest::newRow("NUL") << QString(size, QChar(u'\0'));
        QTest::newRow("no width") << QString(size, QChar(0x200b));
        QTest::newRow("Hebrew") << u"שלום עולם "_s.repeated(size / 10);
        QTest::newRow("half pairs") << QString(size, QChar(0xd83d));
        QTest::newRow("overrides") << QString(size, QChar(0x202e));
    }

    void hugeTextsOfAnyKindHaveRows()
    {
        QFETCH(const QString, text);
        const TextRows rows = wrapped(text, 600);
        QVERIFY(rows.count() >= text.size() / 4096);
        for (qsizetype row = 0; row < rows.count(); row += 1 + rows.count() / 20) {
            QVERIFY(rows.xOf(row, rows.end(row)) <= 600);
            (void)rows.spans(row, 0, text.size());
        }
    }
};

static const TestClass<TestTextRows> testTextRows("tst_textrows");

#include "tst_textrows.moc"
