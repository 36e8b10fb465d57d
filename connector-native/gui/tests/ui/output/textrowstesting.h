#pragma once

#include "ui/output/textrows.h"

#include <QtGui/qfontdatabase.h>

inline QFont fixedFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(13);
    return font;
}

/// The rows of a text, in the font above if in no other.
inline TextRows wrapped(const QString &text, qreal width = 0, const QFont &font = fixedFont())
{
    TextRows rows;
    rows.setFont(font);
    rows.wrap(text, width);
    return rows;
}
