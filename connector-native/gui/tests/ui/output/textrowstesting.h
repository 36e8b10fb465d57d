#pragma once

#include "ui/output/textrows.h"

#include <QtGui/qfont.h>

/// Always the same: other fonts have no pixel of their letters' full colour, or taller marks.
inline QFont fixedFont()
{
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
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
