#include "ui/controls/singleline.h"

#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>

#include <algorithm>

namespace {

// The characters that Unicode calls mandatory line breaks.
bool isLineBreak(QChar character)
{
    constexpr char16_t nextLine = u'\u0085';
    return (character >= u'\n' && character <= u'\r') || character == nextLine
        || character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
}

bool hasLineBreak(const QString &text)
{
    return std::ranges::any_of(text, isLineBreak);
}

QString inOneLine(QString text)
{
    return text.removeIf(isLineBreak);
}

bool isPaste(const QEvent &event)
{
    return event.type() == QEvent::KeyPress
        && static_cast<const QKeyEvent &>(event).matches(QKeySequence::Paste);
}

bool isMiddleClick(const QEvent &event)
{
    return event.type() == QEvent::MouseButtonRelease
        && static_cast<const QMouseEvent &>(event).button() == Qt::MiddleButton;
}

} // namespace

SingleLine::SingleLine(QObject *parent)
    : ItemFilter(parent)
{
    connect(this, &ItemFilter::itemChanged, this, &SingleLine::acceptDrops);
}

void SingleLine::acceptDrops()
{
    if (item()) {
        item()->setFlag(QQuickItem::ItemAcceptsDrops);
    }
}

// As an expression of QML these would be looked up when the program runs, for which the engine first reads
// all names of Qt's namespace: six million instructions before the first frame.
Qt::InputMethodHints SingleLine::hints() const
{
    return Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase | Qt::ImhSensitiveData;
}

bool SingleLine::eventFilter(QObject *watched, QEvent *event)
{
    if (isPaste(*event)) {
        return pasteFrom(QClipboard::Clipboard);
    }
    if (isMiddleClick(*event)) {
        return pasteFrom(QClipboard::Selection);
    }
    switch (event->type()) {
    case QEvent::InputMethod:
        return commit(*static_cast<QInputMethodEvent *>(event));
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        drop(static_cast<QDropEvent *>(event));
        return true;
    default:
        return ItemFilter::eventFilter(watched, event);
    }
}

void SingleLine::paste()
{
    if (!pasteFrom(QClipboard::Clipboard)) {
        QMetaObject::invokeMethod(item(), "paste");
    }
}

bool SingleLine::pasteFrom(QClipboard::Mode mode)
{
    const QString text = QGuiApplication::clipboard()->text(mode);
    if (!hasLineBreak(text)) {
        return false;
    }
    insert(text);
    return true;
}

// What an input method commits replaces the selection, as a paste does.
void SingleLine::insert(const QString &text)
{
    endUndoStep();
    QInputMethodEvent event;
    event.setCommitString(inOneLine(text));
    QCoreApplication::sendEvent(item(), &event);
    endUndoStep();
}

bool SingleLine::commit(const QInputMethodEvent &event)
{
    if (!hasLineBreak(event.commitString())) {
        return false;
    }
    QInputMethodEvent line(event.preeditString(), event.attributes());
    line.setCommitString(inOneLine(event.commitString()), event.replacementStart(),
                         event.replacementLength());
    QCoreApplication::sendEvent(item(), &line);
    return true;
}

void SingleLine::drop(QDropEvent *event)
{
    if (!event->mimeData()->hasText()) {
        return;
    }
    // Always a copy: the text stays where it is dragged from.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (event->type() == QEvent::Drop) {
        item()->forceActiveFocus(Qt::MouseFocusReason);
        QVariant position;
        QMetaObject::invokeMethod(item(), "inputMethodQuery", Q_RETURN_ARG(QVariant, position),
                                  Q_ARG(Qt::InputMethodQuery, Qt::ImCursorPosition),
                                  Q_ARG(QVariant, event->position()));
        item()->setProperty("cursorPosition", position);
        insert(event->mimeData()->text());
    }
}

// An undo step ends where the cursor is moved; an input has no other operation for that. A selection, which
// moving would drop, ends the step as well.
void SingleLine::endUndoStep()
{
    const int cursor = item()->property("cursorPosition").toInt();
    if (item()->property("selectionStart") == item()->property("selectionEnd")) {
        item()->setProperty("cursorPosition", cursor > 0 ? cursor - 1 : item()->property("length").toInt());
        item()->setProperty("cursorPosition", cursor);
    }
}
