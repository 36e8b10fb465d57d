#include "ui/output/textrows.h"

#include <QGlyphRun>
#include <QPainter>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int tabColumns = 8;
// The longest piece of a line that is laid out at once; ordinary lines are shorter.
constexpr qsizetype blockLimit = 2048;
// The most blanks that hang at the end of a row without wrapping.
constexpr qsizetype rowLimit = 1024;
constexpr qreal unlimited = 1'000'000;
// Of the lengths in a layout.
constexpr qreal rounding = 1.0 / 64;

constexpr bool isBlank(QChar character)
{
    return character == u' ' || character == u'\t';
}

constexpr bool isPrintableAscii(QChar character)
{
    return character >= u' ' && character <= u'~';
}

// Has the width of one column in a fixed-pitch font, and is read from left to right.
constexpr bool isPlain(QChar character)
{
    return isPrintableAscii(character) || character == u'\t';
}

// No character of a script that is read from right to left comes before Hebrew.
constexpr bool isLeftToRight(QChar character)
{
    return character < u'\u0590';
}

constexpr bool isLineEnd(QChar character)
{
    return character == u'\n' || character == u'\r' || character == QChar::LineSeparator
        || character == QChar::ParagraphSeparator;
}

QString printableAscii()
{
    QString characters;
    for (char16_t character = u'!'; character <= u'~'; ++character) {
        characters.append(character);
    }
    return characters;
}

} // namespace

qsizetype lineEndAt(QStringView text, qsizetype position)
{
    if (position >= text.size() || !isLineEnd(text[position])) {
        return 0;
    }
    const bool isPair = text[position] == u'\r' && position + 1 < text.size() && text[position + 1] == u'\n';
    return isPair ? 2 : 1;
}

TextRows::Measures TextRows::measure(const QFont &font)
{
    const QString sample = printableAscii();
    QTextLayout layout(sample, font);
    QTextOption option;
    option.setUseDesignMetrics(true);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    qreal advance = line.cursorToX(1);
    for (int i = 1; i < sample.size(); ++i) {
        const bool same = std::abs(line.cursorToX(i + 1) - line.cursorToX(i) - advance) <= rounding;
        advance = same ? advance : 0;
    }
    const QString drawn = u' ' + sample;
    const QList<quint32> glyphs = QRawFont::fromFont(font).glyphIndexesForString(drawn);
    const bool hasLetters = glyphs.size() == drawn.size() && !glyphs.contains(0U);
    return {advance, std::ceil(line.height()), line.ascent(), hasLetters};
}

// All outputs have one font, which takes longer to measure than most outputs to wrap.
void TextRows::setFont(const QFont &font)
{
    static QString latest;
    static Measures measures;
    if (const QString key = font.key(); key != latest) {
        latest = key;
        measures = measure(font);
    }
    m_font = font;
    m_letters = QRawFont::fromFont(font);
    m_measures = measures;
}

void TextRows::wrap(const QString &text, qreal width)
{
    m_text = text;
    m_width = width;
    m_columns = width > 0 && m_measures.advance > 0
        ? static_cast<qsizetype>((width + rounding) / m_measures.advance)
        : 0;
    m_layouts.clear();
    m_rows.clear();
    qsizetype start = 0;
    qsizetype lineEnd = 0;
    do {
        bool plain = m_columns > 0;
        qsizetype end = start;
        for (; end < text.size() && !isLineEnd(text[end]); ++end) {
            plain = plain && isPlain(text[end]);
        }
        wrapLine(start, end, plain);
        lineEnd = lineEndAt(text, end);
        start = end + lineEnd;
    } while (lineEnd > 0);
    m_rows.shrink_to_fit();
}

void TextRows::wrapLine(qsizetype start, qsizetype end, bool plain)
{
    const bool rightToLeft = !plain && QStringView(m_text).sliced(start, end - start).isRightToLeft();
    do {
        const bool plainRow = plain || (!rightToLeft && end - start > blockLimit && isPlainRow(start, end));
        start = plainRow ? wrapPlainRow(start, end) : wrapBlock(start, end, rightToLeft);
    } while (start < end);
}

// The end of the leading run of plain characters.
qsizetype TextRows::fitting(qsizetype start, qsizetype end) const
{
    qsizetype column = 0;
    qsizetype position = start;
    for (; position < end; ++position) {
        column = m_text[position] == u'\t' ? (column / tabColumns + 1) * tabColumns : column + 1;
        if (column > m_columns) {
            break;
        }
    }
    return position;
}

bool TextRows::isPlainRow(qsizetype start, qsizetype end) const
{
    // Blanks after the row belong to it, and so does a combining mark.
    const qsizetype sure = std::min(start + 2 * m_columns + 2, end);
    return m_columns > 0 && std::all_of(m_text.cbegin() + start, m_text.cbegin() + sure, isPlain);
}

qsizetype TextRows::wrapPlainRow(qsizetype start, qsizetype end)
{
    m_rows.push_back({start, false, false});
    const qsizetype limit = fitting(start, end);
    qsizetype next = limit;
    while (next < end && next - start < rowLimit && isBlank(m_text[next])) {
        ++next;
    }
    if (next == end || next > limit) {
        return next;
    }
    // Always allowed after a blank, where Unicode forbids it between two numbers.
    qsizetype afterBlank = limit;
    while (afterBlank > start && !isBlank(m_text[afterBlank - 1])) {
        --afterBlank;
    }
    std::array<uchar, 1024> buffer{};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Line, m_text.constData() + start, limit + 1 - start,
                               buffer.data(), static_cast<qsizetype>(buffer.size()));
    finder.setPosition(limit - start);
    const qsizetype boundary = finder.isAtBoundary() ? limit - start : finder.toPreviousBoundary();
    const qsizetype between = std::max(start + boundary, afterBlank);
    return between > start ? between : limit;
}

qsizetype TextRows::wrapBlock(qsizetype start, qsizetype end, bool rightToLeft)
{
    const bool whole = end - start <= blockLimit;
    const qsizetype blockEnd = whole ? end : start + blockLimit;
    const std::unique_ptr<QTextLayout> layout = layOut(start, blockEnd, rightToLeft, true);
    // The last row of a block may have room for the start of the next block.
    const int rows = std::max(1, layout->lineCount() - (whole ? 0 : 1));
    for (int row = 0; row < rows; ++row) {
        m_rows.push_back({start + layout->lineAt(row).textStart(), row > 0, rightToLeft});
    }
    return rows < layout->lineCount() ? start + layout->lineAt(rows).textStart() : blockEnd;
}

std::unique_ptr<QTextLayout> TextRows::layOut(qsizetype start, qsizetype end, bool rightToLeft,
                                              bool wrapped) const
{
    auto layout = std::make_unique<QTextLayout>(m_text.sliced(start, end - start), m_font);
    // Only hanging blanks reach beyond the width, on the side where the row ends.
    QTextOption option(Qt::AlignAbsolute | (rightToLeft ? Qt::AlignRight : Qt::AlignLeft));
    option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setTabStopDistance(tabColumns * m_measures.advance);
    option.setUseDesignMetrics(true);
    option.setWrapMode(wrapped && m_width > 0 ? QTextOption::WrapAtWordBoundaryOrAnywhere
                                              : QTextOption::NoWrap);
    layout->setTextOption(option);
    layout->setCacheEnabled(true);
    layout->beginLayout();
    while (true) {
        QTextLine line = layout->createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(wrapped && m_width > 0 ? m_width : unlimited);
        line.setPosition(
            {rightToLeft ? line.horizontalAdvance() - line.width() : 0, m_measures.baseline - line.ascent()});
    }
    layout->endLayout();
    return layout;
}

qsizetype TextRows::rowOf(qsizetype position) const
{
    const auto after = std::upper_bound(m_rows.cbegin(), m_rows.cend(), position,
                                        [](qsizetype place, const Row &row) { return place < row.start; });
    return std::max<qsizetype>(0, after - m_rows.cbegin() - 1);
}

qsizetype TextRows::next(qsizetype row) const
{
    return row + 1 < count() ? start(row + 1) : m_text.size();
}

qsizetype TextRows::end(qsizetype row) const
{
    const qsizetype behind = next(row);
    const qsizetype from = start(row);
    if (behind == from || !isLineEnd(m_text[behind - 1])) {
        return behind;
    }
    const bool isPair = behind - from > 1 && lineEndAt(m_text, behind - 2) == 2;
    return behind - (isPair ? 2 : 1);
}

TextRows::Line TextRows::line(qsizetype row) const
{
    qsizetype first = row;
    while (at(first).continues) {
        --first;
    }
    std::unique_ptr<QTextLayout> &layout = m_layouts[first];
    if (!layout) {
        qsizetype last = row;
        while (last + 1 < count() && at(last + 1).continues) {
            ++last;
        }
        layout = layOut(start(first), end(last), at(first).rightToLeft, last > first);
    }
    const int index = static_cast<int>(std::min<qsizetype>(row - first, layout->lineCount() - 1));
    return {layout->lineAt(index), layout.get(), start(first)};
}

qreal TextRows::xOf(qsizetype row, qsizetype position) const
{
    const Line here = line(row);
    const qreal x = here.line.cursorToX(static_cast<int>(std::min(position, end(row)) - here.start));
    return m_width > 0 ? std::clamp(x, 0.0, m_width) : x;
}

qsizetype TextRows::positionAt(qsizetype row, qreal x, QTextLine::CursorPosition kind) const
{
    const Line here = line(row);
    int position = here.line.xToCursor(x, QTextLine::CursorOnCharacter);
    if (kind == QTextLine::CursorBetweenCharacters) {
        // Qt 6.4: xToCursor(CursorBetweenCharacters) misses the position behind a letter with combining
        // marks.
        const int next = std::min(here.layout->nextCursorPosition(position),
                                  here.line.textStart() + here.line.textLength());
        const auto distance = [&](int place) { return std::abs(here.line.cursorToX(place) - x); };
        position = distance(next) < distance(position) ? next : position;
    }
    return std::clamp(here.start + position, start(row), end(row));
}

std::vector<RowSpan> TextRows::spans(qsizetype row, qsizetype from, qsizetype to) const
{
    const qsizetype first = std::clamp(from, start(row), end(row));
    const qsizetype last = std::clamp(to, first, end(row));
    std::vector<RowSpan> pieces = piecesOf(row, first, last);
    if (from <= end(row) && to > end(row)) {
        // A selected line end is drawn as one more character.
        const qreal right = line(row).line.naturalTextWidth();
        pieces.push_back({right, right + m_measures.advance});
    }
    std::sort(pieces.begin(), pieces.end(),
              [](const RowSpan &one, const RowSpan &other) { return one.left < other.left; });
    std::vector<RowSpan> joined;
    for (RowSpan piece : pieces) {
        piece.left = std::max(piece.left, 0.0);
        piece.right = m_width > 0 ? std::min(piece.right, m_width) : piece.right;
        if (!joined.empty() && piece.left <= joined.back().right + rounding) {
            joined.back().right = std::max(joined.back().right, piece.right);
        } else if (piece.left < piece.right) {
            joined.push_back(piece);
        }
    }
    return joined;
}

std::vector<RowSpan> TextRows::piecesOf(qsizetype row, qsizetype from, qsizetype to) const
{
    if (from == to) {
        return {};
    }
    const Line here = line(row);
    const auto x = [&here](qsizetype position) {
        return here.line.cursorToX(static_cast<int>(position - here.start));
    };
    // Explicit direction marks in a row affect the following ones.
    if (!at(row).rightToLeft
        && std::all_of(m_text.cbegin() + here.start, m_text.cbegin() + end(row), isLeftToRight)) {
        return {{x(from), x(to)}};
    }
    std::vector<RowSpan> pieces;
    const auto length = static_cast<int>(to - from);
    for (const QGlyphRun &run : here.line.glyphRuns(static_cast<int>(from - here.start), length)) {
        pieces.push_back({run.boundingRect().left(), run.boundingRect().right()});
    }
    for (qsizetype position = from; position < to; ++position) {
        if (m_text[position] == u'\t') {
            const auto [left, right] = std::minmax({x(position), x(position + 1)});
            pieces.push_back({left, right});
        }
    }
    return pieces;
}

bool TextRows::isDrawnByColumns(qsizetype row) const
{
    return m_measures.hasLetters && m_measures.advance > 0 && !at(row).continues && !at(row).rightToLeft
        && std::all_of(m_text.cbegin() + start(row), m_text.cbegin() + end(row), isPrintableAscii);
}

// To lay out letters whose places are known takes nearly as long as to draw them.
void TextRows::draw(QPainter &painter, qsizetype row, QPointF topLeft) const
{
    if (!isDrawnByColumns(row)) {
        line(row).line.draw(&painter, topLeft);
        return;
    }
    const QList<quint32> glyphs =
        m_letters.glyphIndexesForString(m_text.sliced(start(row), end(row) - start(row)));
    QList<QPointF> places(glyphs.size());
    for (qsizetype column = 0; column < places.size(); ++column) {
        places[column].setX(static_cast<qreal>(column) * m_measures.advance);
    }
    QGlyphRun run;
    run.setRawFont(m_letters);
    run.setGlyphIndexes(glyphs);
    run.setPositions(places);
    painter.drawGlyphRun(topLeft + QPointF(0, m_measures.baseline), run);
}

void TextRows::keepLayouts(qsizetype first, qsizetype last) const
{
    while (at(first).continues) {
        --first;
    }
    std::erase_if(m_layouts, [=](const auto &entry) { return entry.first < first || entry.first > last; });
}
