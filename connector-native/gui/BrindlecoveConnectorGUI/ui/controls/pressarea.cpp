#include "ui/controls/pressarea.h"

#include "ui/platform/synchronousframe.h"

#include <QKeyEvent>
#include <QMouseEvent>

PressArea::PressArea(QQuickItem *parent)
    : QQuickItem(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setActiveFocusOnTab(true);
}

void PressArea::trigger()
{
    emit aboutToTrigger();
    renderNow(window());
    emit triggered();
    renderNow(window());
}

void PressArea::mousePressEvent(QMouseEvent *event)
{
    forceActiveFocus(Qt::MouseFocusReason);
    event->accept();
}

void PressArea::mouseReleaseEvent(QMouseEvent *event)
{
    if (contains(event->position())) {
        trigger();
    }
}

void PressArea::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    const bool presses = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
    // Ctrl+Return and the like belong to whoever defines them, keypad keys are the same keys.
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (!presses || !plain) {
        event->ignore();
        return;
    }
    // A key held down presses once: each press runs a command.
    if (!event->isAutoRepeat()) {
        trigger();
    }
}
