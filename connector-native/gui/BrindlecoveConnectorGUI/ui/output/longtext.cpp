#include "ui/output/longtext.h"

namespace {

constexpr qsizetype Long = 10'000;
constexpr int LinesPerParagraph = 64;

} // namespace

bool LongText::isLong(const QString &text)
{
    return text.size() >= Long;
}

QString LongText::inFewParagraphs(const QString &text)
{
    if (!isLong(text)) {
        return text;
    }
    QString joined;
    joined.reserve(text.size());
    int lines = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair = text.at(i) == u'\r' && i + 1 < text.size() && text.at(i + 1) == u'\n';
        const bool isLineEnd = isPair || text.at(i) == u'\n' || text.at(i) == u'\r';
        const bool isJoint = isLineEnd && ++lines % LinesPerParagraph != 0;
        joined.append(isJoint ? QChar(QChar::LineSeparator) : isLineEnd ? QChar(u'\n') : text.at(i));
        i += isPair ? 1 : 0;
    }
    return joined;
}
