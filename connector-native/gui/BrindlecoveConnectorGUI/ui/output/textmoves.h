#pragma once

#include "ui/accessibility/textpieces.h"
#include "ui/output/textrows.h"

/// What of a text is selected: from where the selection began to the text cursor.
struct TextSelection
{
    qsizetype anchor = 0;
    qsizetype cursor = 0;

    [[nodiscard]] qsizetype start() const { return std::min(anchor, cursor); }
    [[nodiscard]] qsizetype end() const { return std::max(anchor, cursor); }
    [[nodiscard]] bool isEmpty() const { return anchor == cursor; }
    friend bool operator==(const TextSelection &, const TextSelection &) = default;
};

/// What of a text another one replaces: all before and behind is the same in both.
struct TextChange
{
    qsizetype start = 0;
    qsizetype oldEnd = 0;
    qsizetype newEnd = 0;
};

[[nodiscard]] TextChange changeBetween(QStringView before, QStringView after);
/// Keeps both ends of a selection at their text; with nothing selected when one of them was within the
/// change.
[[nodiscard]] TextSelection afterChange(const TextSelection &selection, const TextChange &change);

/// Where the text cursor goes by characters as the user sees them, and words; a line end is one of each.
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

/// Whether a move goes to another row at the same place in it; how far is the caller's to say.
[[nodiscard]] constexpr bool isVertical(TextMove move)
{
    return move >= TextMove::RowUp;
}

/// Where any other move leads to. Left is left also where the text is read from right to left.
[[nodiscard]] qsizetype moved(const TextRows &rows, qsizetype position, TextMove move);

/// The word, the blanks or the punctuation mark that the character at a position belongs to.
[[nodiscard]] TextRange wordAt(QStringView text, qsizetype position);
/// The line of the text around a position, with its line end.
[[nodiscard]] TextRange lineAt(QStringView text, qsizetype position);
