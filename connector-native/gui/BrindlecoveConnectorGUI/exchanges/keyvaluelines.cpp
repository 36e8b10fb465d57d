#include "exchanges/keyvaluelines.h"

#include <QStringView>

namespace {

// A carriage return with a line feed counts as one character that is not a line feed: text pasted with such
// line ends stays part of its value.
qsizetype lineEnd(QStringView text, qsizetype begin)
{
    qsizetype lineFeed = text.indexOf(u'\n', begin);
    while (lineFeed > 0 && text.at(lineFeed - 1) == u'\r') {
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
