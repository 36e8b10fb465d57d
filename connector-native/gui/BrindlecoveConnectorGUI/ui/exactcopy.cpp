#include "ui/exactcopy.h"

#include <QClipboard>
#include <QGuiApplication>

namespace {

// Where the document position lies in the source, found by walking on from a known place.
qsizetype walk(const QString &source, qsizetype place, qsizetype steps)
{
    for (; steps > 0 && place < source.size(); --steps) {
        const bool lineEnd =
            source.at(place) == u'\r' && place + 1 < source.size() && source.at(place + 1) == u'\n';
        place += lineEnd ? 2 : 1;
    }
    return place;
}

} // namespace

QString selectedSource(const QString &source, qsizetype start, qsizetype end)
{
    const qsizetype from = walk(source, 0, start);
    return source.sliced(from, walk(source, from, end - start) - from);
}

void ExactCopy::copy(const QString &source, int selectionStart, int selectionEnd) const
{
    if (selectionStart < selectionEnd) {
        QGuiApplication::clipboard()->setText(selectedSource(source, selectionStart, selectionEnd));
    }
}
