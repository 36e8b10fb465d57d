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
    emit triggered();
    renderNow(window());
}

void PressArea::hold(Holder holder)
{
    m_holder = holder;
    setDown(holder != Holder::Nobody);
}

void PressArea::setDown(bool down)
{
    if (m_down != down) {
        m_down = down;
        emit downChanged();
    }
}

void PressArea::mousePressEvent(QMouseEvent *event)
{
    // A finger may be about to scroll; and what gets the focus is scrolled into view, away from the finger.
    if (event->deviceType() != QInputDevice::DeviceType::TouchScreen) {
        forceActiveFocus(Qt::MouseFocusReason);
    }
    hold(Holder::Mouse);
}

void PressArea::mouseMoveEvent(QMouseEvent *event)
{
    setDown(m_holder == Holder::Mouse && contains(event->position()));
}

void PressArea::mouseReleaseEvent(QMouseEvent *event)
{
    const bool triggers = m_holder == Holder::Mouse && contains(event->position());
    letGo();
    if (triggers) {
        forceActiveFocus(Qt::MouseFocusReason);
        trigger();
    }
}

void PressArea::mouseUngrabEvent()
{
    letGo();
}

void PressArea::focusOutEvent(QFocusEvent *event)
{
    QQuickItem::focusOutEvent(event);
    letGo();
}

void PressArea::keyPressEvent(QKeyEvent *event)
{
    // Ctrl+Return and the like are left to shortcuts; the keypad's keys count as the same keys.
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const int key = isPlain ? event->key() : Qt::Key_unknown;
    // A key held down presses once: each press runs a command.
    const bool isFirst = !event->isAutoRepeat();
    if (key == Qt::Key_Space) {
        if (isFirst) {
            hold(Holder::Space);
        }
    } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        if (isFirst) {
            trigger();
        }
    } else if (key == Qt::Key_Escape && m_holder != Holder::Nobody) {
        letGo();
    } else {
        event->ignore();
    }
}

void PressArea::keyReleaseEvent(QKeyEvent *event)
{
    const bool triggers =
        event->key() == Qt::Key_Space && !event->isAutoRepeat() && m_holder == Holder::Space;
    if (!triggers) {
        event->ignore();
        return;
    }
    letGo();
    trigger();
}
