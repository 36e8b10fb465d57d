#include "ui/accessibility/accessibletext.h"

QString bulletsOf(const QQuickItem &input)
{
    return QString(input.property("length").toInt(), u'•');
}

QAccessible::State AccessibleText::state() const
{
    QAccessible::State state = AccessibleItem::state();
    state.selectableText = true;
    return state;
}

void *AccessibleText::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface *>(this) : nullptr;
}

void AccessibleText::selection(int index, int *start, int *end) const
{
    const bool known = index < selectionCount();
    *start = known ? number("selectionStart") : 0;
    *end = known ? number("selectionEnd") : 0;
}

int AccessibleText::selectionCount() const
{
    return number("selectionStart") < number("selectionEnd") ? 1 : 0;
}

void AccessibleText::removeSelection(int index)
{
    if (index == 0) {
        QMetaObject::invokeMethod(object(), "deselect");
    }
}

void AccessibleText::setSelection(int index, int start, int end)
{
    if (index == 0) {
        QMetaObject::invokeMethod(object(), "select", Q_ARG(int, start), Q_ARG(int, end));
    }
}

void AccessibleText::setCursorPosition(int position)
{
    object()->setProperty("cursorPosition", position);
}

QString AccessibleText::text(int start, int end) const
{
    return content().mid(start, end - start);
}

QRect AccessibleText::characterRect(int offset) const
{
    QRectF here;
    QRectF next;
    QMetaObject::invokeMethod(object(), "positionToRectangle", Q_RETURN_ARG(QRectF, here),
                              Q_ARG(int, offset));
    QMetaObject::invokeMethod(object(), "positionToRectangle", Q_RETURN_ARG(QRectF, next),
                              Q_ARG(int, offset + 1));
    // The last character of a line reaches nowhere: the next position is on another one.
    if (next.top() == here.top() && next.left() > here.left()) {
        here.setRight(next.left());
    }
    return onScreen(here);
}

int AccessibleText::offsetAtPoint(const QPoint &point) const
{
    const QPointF inItem = item()->mapFromGlobal(point);
    int offset = -1;
    // An edit is asked for a point, an input for a place on its one line.
    if (!QMetaObject::invokeMethod(object(), "positionAt", Q_RETURN_ARG(int, offset),
                                   Q_ARG(qreal, inItem.x()), Q_ARG(qreal, inItem.y()))) {
        return -1;
    }
    return offset;
}

void AccessibleText::scrollToSubstring(int start, int end)
{
    Q_UNUSED(end)
    setCursorPosition(start);
}

QString AccessibleText::attributes(int, int *start, int *end) const
{
    *start = 0;
    *end = characterCount();
    return {};
}

QAccessible::State AccessibleOutput::state() const
{
    QAccessible::State state = AccessibleText::state();
    state.readOnly = true;
    state.multiLine = true;
    return state;
}

// As the document has it, in which each kind of line end is one position.
QString AccessibleOutput::content() const
{
    QString text = object()->property("source").toString();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\r', u'\n');
    return speakable(text);
}

QAccessible::State AccessibleSecret::state() const
{
    QAccessible::State state = AccessibleText::state();
    state.editable = true;
    state.passwordEdit = true;
    return state;
}
