#pragma once

#include <QtQuick/qquickwindow.h>
#include <QtTest/qtest.h>

/// Types an ASCII text, key by key, into whatever has the window's focus.
inline void typeText(QQuickWindow *window, const QString &text)
{
    for (const QChar character : text) {
        QTest::keyClick(window, character.toLatin1());
    }
}
