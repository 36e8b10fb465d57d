#include "ui/accessibility/accessibletext.h"

#include "ui/accessibility/textpieces.h"
#include "ui/output/outputview.h"

#include <QCoreApplication>
#include <QInputMethodEvent>

#include <algorithm>

namespace {

// The result of textAtOffset() and its kin.
QString answer(const QString &text, TextRange piece, int *start, int *end)
{
    *start = static_cast<int>(piece.start);
    *end = static_cast<int>(piece.end);
    return text.sliced(piece.start, piece.end - piece.start);
}

} // namespace

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
    return end > start ? content().mid(start, end - start) : QString();
}

// By Qt's convention -1 stands for the end of the text and -2 for the cursor.
qsizetype AccessibleText::place(int offset, qsizetype size) const
{
    constexpr int end = -1;
    constexpr int cursor = -2;
    const qsizetype meant = offset == end ? size : offset == cursor ? cursorPosition() : offset;
    return std::clamp<qsizetype>(meant, 0, size);
}

QString AccessibleText::textBeforeOffset(int offset, QAccessible::TextBoundaryType kind, int *start,
                                         int *end) const
{
    const QString text = content();
    const TextRange here = pieceAt(text, place(offset, text.size()), kind);
    return answer(text, here.start == 0 ? TextRange{} : pieceAt(text, here.start - 1, kind), start, end);
}

QString AccessibleText::textAtOffset(int offset, QAccessible::TextBoundaryType kind, int *start,
                                     int *end) const
{
    const QString text = content();
    return answer(text, pieceAt(text, place(offset, text.size()), kind), start, end);
}

QString AccessibleText::textAfterOffset(int offset, QAccessible::TextBoundaryType kind, int *start,
                                        int *end) const
{
    const QString text = content();
    const TextRange here = pieceAt(text, place(offset, text.size()), kind);
    const bool isLast = here.end == text.size();
    return answer(text, isLast ? TextRange{here.end, here.end} : pieceAt(text, here.end, kind), start, end);
}

QRectF AccessibleText::rectangleOf(int position) const
{
    QRectF rectangle;
    QMetaObject::invokeMethod(object(), "positionToRectangle", Q_RETURN_ARG(QRectF, rectangle),
                              Q_ARG(int, position));
    return rectangle;
}

QRect AccessibleText::characterRect(int offset) const
{
    // Clients ask for one character more than there are, and the document behind an edit would warn.
    const int end = characterCount();
    const int position = std::clamp(offset, 0, end);
    QRectF here = rectangleOf(position);
    const QRectF next = rectangleOf(std::min(position + 1, end));
    // The last character of a line has no width: the next position is on another line.
    if (next.top() == here.top() && next.left() > here.left()) {
        here.setRight(next.left());
    }
    return onScreen(here.translated(textOrigin()));
}

int AccessibleText::offsetAtPoint(const QPoint &point) const
{
    if (!rect().contains(point)) {
        return -1;
    }
    // The nearest place for the cursor: in front of the character at the point, or behind it.
    QVariant position;
    QMetaObject::invokeMethod(object(), "inputMethodQuery", Q_RETURN_ARG(QVariant, position),
                              Q_ARG(Qt::InputMethodQuery, Qt::ImCursorPosition),
                              Q_ARG(QVariant, item()->mapFromGlobal(point)));
    const int offset = position.toInt();
    return offset > 0 && characterRect(offset - 1).contains(point) ? offset - 1 : offset;
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

// Screen readers expect a line feed at each line end.
QString AccessibleOutput::content() const
{
    QString text = speakable(view()->source());
    for (qsizetype place = text.indexOf(u'\r'); place >= 0; place = text.indexOf(u'\r', place + 1)) {
        if (lineEndAt(text, place) == 1) {
            text[place] = u'\n';
        }
    }
    return text;
}

OutputView *AccessibleOutput::view() const
{
    return static_cast<OutputView *>(object());
}

QRect AccessibleOutput::characterRect(int offset) const
{
    return onScreen(view()->characterRect(std::clamp(offset, 0, characterCount())));
}

int AccessibleOutput::offsetAtPoint(const QPoint &point) const
{
    const QPointF inView = view()->mapFromGlobal(point);
    return view()->contains(inView) ? static_cast<int>(view()->characterAt(inView)) : -1;
}

QAccessible::State AccessibleField::state() const
{
    QAccessible::State state = AccessibleText::state();
    state.editable = true;
    return state;
}

void *AccessibleField::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::EditableTextInterface ? static_cast<QAccessibleEditableTextInterface *>(this)
                                                      : AccessibleText::interface_cast(type);
}

void AccessibleField::setText(QAccessible::Text kind, const QString &text)
{
    if (kind == QAccessible::Value) {
        replaceText(0, characterCount(), text);
    }
}

void AccessibleField::replaceText(int start, int end, const QString &text)
{
    const qsizetype size = characterCount();
    const auto first = static_cast<int>(place(start, size));
    const auto last = static_cast<int>(place(end, size));
    setCursorPosition(first);
    QInputMethodEvent event;
    event.setCommitString(text, 0, std::max(0, last - first));
    QCoreApplication::sendEvent(item(), &event);
}

// Qt 6.4: positionToRectangle() leaves the padding of a text input out, cursorRectangle does not.
QPointF AccessibleField::textOrigin() const
{
    return object()->property("cursorRectangle").toRectF().topLeft()
        - rectangleOf(cursorPosition()).topLeft();
}

QAccessible::State AccessibleSecret::state() const
{
    QAccessible::State state = AccessibleField::state();
    state.passwordEdit = true;
    return state;
}
