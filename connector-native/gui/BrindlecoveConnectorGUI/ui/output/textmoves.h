#pragma once

#include "ui/accessibility/textpieces.h"
#include "ui/output/textrows.h"

/// A selection, from where it began to the text cursor.
struct TextSelection
{
    qsizetype anchor = 0;
    qsizetype cursor = 0;

    [[nodiscard]] qsizetype start() const { return std::min(anchor, cursor); }
    [[nodiscard]] qsizetype end() const { return std::max(anchor, cursor); }
    [[nodiscard]] bool isEmpty() const { return anchor == cursor; }
    friend bool operator==(const TextSelection &, const TextSelection &) = default;
};

/// The selection after a change: both ends stay at their text, or nothing is selected if an end was within
/// the change.
[[nodiscard]] TextSelection afterChange(const TextSelection &selection, const TextChange &change);

/// Moves by grapheme clusters and words; a line end counts as one of each.
[[nodiscard]] qsizetype nextCharacter(const TextRows &rows, qsizetype position);
[[nodiscard]] qsizetype previousCharacter(const TextRows &rows, qsizetype position);
[[nodiscard]] qsizetype nextWord(const TextRows &rows, qsizetype position);
[[nodiscard]] qsizetype previousWord(const TextRows &rows, qsizetype position);
/// The last position that a text cursor can have in a row.
[[nodiscard]] qsizetype lastInRow(const TextRows &rows, qsizetype row);

enum class TextMove {
    Left,
    Right,
    WordLeft,
    WordRight,
    RowStart,
    RowEnd,
    LineStart,
    LineEnd,
    TextStart,
    TextEnd,
    RowUp,
    RowDown,
    PageUp,
    PageDown
};

/// Whether a move goes to another row in the same column; the caller knows how many rows.
[[nodiscard]] constexpr bool isVertical(TextMove move)
{
    return move >= TextMove::RowUp;
}

/// The result of any other move. Left means visually left, also in right-to-left text.
[[nodiscard]] qsizetype moved(const TextRows &rows, qsizetype position, TextMove move);

/// The word, the blanks or the punctuation mark that the character at a position belongs to.
[[nodiscard]] TextRange wordAt(QStringView text, qsizetype position);
/// The line of the text around a position, with its line end.
[[nodiscard]] TextRange lineAt(QStringView text, qsizetype position);
