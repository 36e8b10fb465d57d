#include "ui/platform/systemfonts.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>

namespace {

QFont systemFont(int size, QFont::Weight weight)
{
    QFont font;
    font.setPixelSize(size);
    font.setWeight(weight);
    return font;
}

} // namespace

int SystemFonts::size()
{
    return QFontInfo(QGuiApplication::font()).pixelSize();
}

int SystemFonts::captionSize()
{
    return qRound(size() * 0.9);
}

int SystemFonts::thirdTitleSize()
{
    return qRound(size() * 1.3);
}

int SystemFonts::largeTitleSize()
{
    return qRound(size() * 2.1);
}

QString SystemFonts::fixedFamily()
{
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

QList<QFont> SystemFonts::ofFirstFrame()
{
    return {systemFont(size(), QFont::Normal), systemFont(size(), QFont::Bold),
            systemFont(captionSize(), QFont::Normal), systemFont(thirdTitleSize(), QFont::DemiBold),
            systemFont(largeTitleSize(), QFont::Bold)};
}
