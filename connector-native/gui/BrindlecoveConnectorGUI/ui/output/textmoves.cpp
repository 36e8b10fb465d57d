#include "ui/output/textmoves.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <optional>

namespace {

enum class Kind { Word, Blank, Mark, LineEnd };

// The underscore, and everything but blanks and ASCII punctuation, belongs to a word.
Kind kindOf(QStringView text, qsizetype position)
{
    const QChar character = text[position];
    if (lineEndAt(text, position) > 0) {
        return Kind::LineEnd;
    }
    if (character.isSpace()) {
        return Kind::Blank;
    }
    const bool isMark =
        character < u'\u0080' && character.isPrint() && !character.isLetterOrNumber() && character != u'_';
    return isMark ? Kind::Mark : Kind::Word;
}

qsizetype skipForward(QStringView text, qsizetype position, Kind kind)
{
    while (position < text.size() && kindOf(text, position) == kind) {
        ++position;
    }
    return position;
}

qsizetype skipBackward(QStringView text, qsizetype position, Kind kind)
{
    while (position > 0 && kindOf(text, position - 1) == kind) {
        --position;
    }
    return position;
}

QTextBoundaryFinder charactersOf(const TextRows &rows, qsizetype row)
{
    const qsizetype start = rows.start(row);
    return {QTextBoundaryFinder::Grapheme, rows.text().constData() + start, rows.end(row) - start};
}

std::optional<qsizetype> shifted(qsizetype position, const TextChange &change)
{
    if (position <= change.start) {
        return position;
    }
    return position < change.oldEnd ? std::nullopt : std::optional(position + change.newEnd - change.oldEnd);
}

} // namespace

TextSelection afterChange(const TextSelection &selection, const TextChange &change)
{
    const bool isReplaced =
        !selection.isEmpty() && change.start <= selection.start() && selection.end() <= change.oldEnd;
    if (isReplaced) {
        return {change.start, change.start};
    }
    const std::optional<qsizetype> anchor = shifted(selection.anchor, change);
    const std::optional<qsizetype> cursor = shifted(selection.cursor, change);
    if (anchor && cursor) {
        return {*anchor, *cursor};
    }
    return {cursor.value_or(change.start), cursor.value_or(change.start)};
}

qsizetype nextCharacter(const TextRows &rows, qsizetype position)
{
    const qsizetype row = rows.rowOf(position);
    if (position >= rows.end(row)) {
        return rows.next(row);
    }
    QTextBoundaryFinder finder = charactersOf(rows, row);
    finder.setPosition(position - rows.start(row));
    return rows.start(row) + finder.toNextBoundary();
}

qsizetype previousCharacter(const TextRows &rows, qsizetype position)
{
    const qsizetype row = rows.rowOf(position - 1);
    if (position > rows.end(row)) {
        return rows.end(row);
    }
    QTextBoundaryFinder finder = charactersOf(rows, row);
    finder.setPosition(position - rows.start(row));
    return rows.start(row) + std::max<qsizetype>(0, finder.toPreviousBoundary());
}

qsizetype nextWord(const TextRows &rows, qsizetype position)
{
    const QStringView text = rows.text();
    if (position >= text.size()) {
        return text.size();
    }
    const Kind kind = kindOf(text, position);
    if (kind == Kind::LineEnd) {
        return position + lineEndAt(text, position);
    }
    return skipForward(text, skipForward(text, position, kind), Kind::Blank);
}

qsizetype previousWord(const TextRows &rows, qsizetype position)
{
    const QStringView text = rows.text();
    position = skipBackward(text, position, Kind::Blank);
    if (position == 0) {
        return 0;
    }
    const Kind kind = kindOf(text, position - 1);
    return kind == Kind::LineEnd ? previousCharacter(rows, position) : skipBackward(text, position, kind);
}

qsizetype lastInRow(const TextRows &rows, qsizetype row)
{
    const qsizetype end = rows.end(row);
    const bool wraps = row + 1 < rows.count() && end == rows.next(row);
    return wraps ? previousCharacter(rows, end) : end;
}

qsizetype moved(const TextRows &rows, qsizetype position, TextMove move)
{
    const qsizetype row = rows.rowOf(position);
    const bool forward = !rows.isRightToLeft(row);
    switch (move) {
    case TextMove::Left:
        return forward ? previousCharacter(rows, position) : nextCharacter(rows, position);
    case TextMove::Right:
        return forward ? nextCharacter(rows, position) : previousCharacter(rows, position);
    case TextMove::WordLeft:
        return forward ? previousWord(rows, position) : nextWord(rows, position);
    case TextMove::WordRight:
        return forward ? nextWord(rows, position) : previousWord(rows, position);
    case TextMove::RowStart:
        return rows.start(row);
    case TextMove::RowEnd:
        return lastInRow(rows, row);
    case TextMove::LineStart:
        return lineAt(rows.text(), position).start;
    case TextMove::LineEnd:
        return rows.end(rows.rowOf(std::max(position, lineAt(rows.text(), position).end - 1)));
    case TextMove::TextStart:
        return 0;
    case TextMove::TextEnd:
        return rows.text().size();
    default:
        return position;
    }
}

TextRange wordAt(QStringView text, qsizetype position)
{
    if (position >= text.size() || lineEndAt(text, position) > 0) {
        return {position, position};
    }
    const Kind kind = kindOf(text, position);
    if (kind == Kind::Mark) {
        return {position, position + 1};
    }
    return {skipBackward(text, position, kind), skipForward(text, position, kind)};
}

TextRange lineAt(QStringView text, qsizetype position)
{
    qsizetype start = position;
    while (start > 0 && lineEndAt(text, start - 1) == 0) {
        --start;
    }
    qsizetype end = position;
    while (end < text.size() && lineEndAt(text, end) == 0) {
        ++end;
    }
    return {start, end + lineEndAt(text, end)};
}
