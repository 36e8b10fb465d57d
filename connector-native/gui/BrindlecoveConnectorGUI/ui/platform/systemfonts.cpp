#include "ui/platform/systemfonts.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>

qreal SystemFonts::size() const
{
    return QFontInfo(QGuiApplication::font()).pixelSize();
}

QString SystemFonts::fixedFamily() const
{
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}
