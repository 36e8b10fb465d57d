#pragma once

#include <QtCore/qcoreapplication.h>
#include <QtGui/qevent.h>
#include <QtQuick/qquickwindow.h>
#include <QtTest/qtest.h>

/// Whether the receiver, a window or an item of one, accepts the press of a key.
[[nodiscard]] inline bool acceptsKey(QObject *receiver, Qt::Key key, const QString &text = {})
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(receiver, &event);
    return event.isAccepted();
}

/// Types an ASCII text, key by key, into whatever has the window's focus.
inline void typeText(QQuickWindow *window, const QString &text)
{
    for (const QChar character : text) {
        QTest::keyClick(window, character.toLatin1());
    }
}
