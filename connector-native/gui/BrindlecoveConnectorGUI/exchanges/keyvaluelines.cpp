#include "exchanges/keyvaluelines.h"

#include <QStringView>

namespace {

// Carriage return and line feed together are one character to a reader, and that one is no line feed: text
// pasted with such endings stays part of the value it came in.
bool endsLine(QStringView text, qsizetype lineFeed)
{
    return lineFeed == 0 || text.at(lineFeed - 1) != u'\r';
}

qsizetype lineEnd(QStringView text, qsizetype begin)
{
    qsizetype lineFeed = text.indexOf(u'\n', begin);
    while (lineFeed >= 0 && !endsLine(text, lineFeed)) {
        lineFeed = text.indexOf(u'\n', lineFeed + 1);
    }
    return lineFeed < 0 ? text.size() : lineFeed;
}

} // namespace

std::optional<QString> extractValue(const QString &output, const QString &key)
{
    const QStringView text = output;
    const QString prefix = key + u'=';
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype end = lineEnd(text, begin);
        const QStringView line = text.sliced(begin, end - begin);
        if (line.startsWith(prefix)) {
            return line.sliced(prefix.size()).toString();
        }
        begin = end + 1;
    }
    return std::nullopt;
}
