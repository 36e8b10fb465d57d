#pragma once

#include <QAccessible>
#include <QStringView>

/// A part of a text: from one offset up to another.
struct TextRange
{
    qsizetype start = 0;
    qsizetype end = 0;
    friend bool operator==(const TextRange &, const TextRange &) = default;
};

/// The character, word, sentence or paragraph of a text at an offset between 0 and the text's length; a line
/// is a paragraph here. The pieces of one kind lie side by side and cover the whole text: a word includes
/// what stands between it and the next one, a paragraph its line feed. At the end of the text it is the last
/// piece, which is empty for characters and behind a final line feed. Pure.
[[nodiscard]] TextRange pieceAt(QStringView text, qsizetype offset, QAccessible::TextBoundaryType kind);

/// The part in which two texts differ; before and after it they are equal.
struct TextChange
{
    qsizetype start = 0;
    qsizetype oldEnd = 0;
    qsizetype newEnd = 0;
};

/// From the first difference to the last. Pure.
[[nodiscard]] TextChange changeBetween(QStringView before, QStringView after);
