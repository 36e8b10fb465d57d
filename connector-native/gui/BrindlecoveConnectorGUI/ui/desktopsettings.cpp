#include "ui/desktopsettings.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>

qreal DesktopSettings::fontSize() const
{
    return QFontInfo(QGuiApplication::font()).pixelSize();
}

QString DesktopSettings::fixedFontFamily() const
{
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}
