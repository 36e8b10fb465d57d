#include "ui/accessibility/textpieces.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace {

// Finding boundaries takes time and memory for every character of the searched text.
constexpr qsizetype longestStretch = 1024;

TextRange paragraphAt(QStringView text, qsizetype offset)
{
    const qsizetype previousEnd = text.first(offset).lastIndexOf(u'\n');
    const qsizetype end = text.indexOf(u'\n', offset);
    return {previousEnd + 1, end < 0 ? text.size() : end + 1};
}

// Cuts after a blank if there is one, and never inside a surrogate pair.
qsizetype lengthOfStretch(QStringView paragraph)
{
    if (paragraph.size() <= longestStretch) {
        return paragraph.size();
    }
    const qsizetype blank = paragraph.first(longestStretch).lastIndexOf(u' ');
    if (blank >= 0) {
        return blank + 1;
    }
    return longestStretch + (paragraph.at(longestStretch - 1).isHighSurrogate() ? 1 : 0);
}

// Long paragraphs are cut from their start on, so that the cuts are the same whatever is asked for.
TextRange stretchAt(QStringView text, qsizetype offset)
{
    const TextRange paragraph = paragraphAt(text, offset);
    TextRange stretch{paragraph.start, paragraph.start};
    do {
        stretch.start = stretch.end;
        stretch.end += lengthOfStretch(text.sliced(stretch.start, paragraph.end - stretch.start));
    } while (stretch.end <= offset && stretch.end < paragraph.end);
    return stretch;
}

TextRange pieceOfStretch(QStringView stretch, qsizetype offset, QTextBoundaryFinder::BoundaryType type)
{
    QTextBoundaryFinder finder(type, stretch);
    TextRange piece{0, stretch.size()};
    for (auto place = finder.toNextBoundary(); place > 0; place = finder.toNextBoundary()) {
        if (!finder.boundaryReasons().testFlag(QTextBoundaryFinder::StartOfItem)) {
            continue;
        }
        if (place > offset) {
            piece.end = place;
            break;
        }
        piece.start = place;
    }
    return piece;
}

TextRange pieceAt(QStringView text, qsizetype offset, QTextBoundaryFinder::BoundaryType type)
{
    const TextRange stretch = stretchAt(text, offset);
    const TextRange piece =
        pieceOfStretch(text.sliced(stretch.start, stretch.end - stretch.start), offset - stretch.start, type);
    return {stretch.start + piece.start, stretch.start + piece.end};
}

} // namespace

TextRange pieceAt(QStringView text, qsizetype offset, QAccessible::TextBoundaryType kind)
{
    switch (kind) {
    case QAccessible::CharBoundary:
        return offset == text.size() ? TextRange{offset, offset}
                                     : pieceAt(text, offset, QTextBoundaryFinder::Grapheme);
    case QAccessible::WordBoundary:
        return pieceAt(text, offset, QTextBoundaryFinder::Word);
    case QAccessible::SentenceBoundary:
        return pieceAt(text, offset, QTextBoundaryFinder::Sentence);
    case QAccessible::LineBoundary:
    case QAccessible::ParagraphBoundary:
        return paragraphAt(text, offset);
    case QAccessible::NoBoundary:
        break;
    }
    return {0, text.size()};
}

TextChange changeBetween(QStringView before, QStringView after)
{
    const qsizetype shorter = std::min(before.size(), after.size());
    const qsizetype start =
        std::mismatch(before.begin(), before.begin() + shorter, after.begin()).first - before.begin();
    const qsizetype behind =
        std::mismatch(before.rbegin(), before.rbegin() + (shorter - start), after.rbegin()).first
        - before.rbegin();
    return {start, before.size() - behind, after.size() - behind};
}
