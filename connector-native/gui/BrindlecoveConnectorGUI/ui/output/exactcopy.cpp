#include "ui/output/exactcopy.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>

namespace {

// Where the document position lies in the source, found by walking on from a known place.
qsizetype walk(const QString &source, qsizetype place, qsizetype steps)
{
    for (; steps > 0 && place < source.size(); --steps) {
        const bool lineEnd =
            source.at(place) == u'\r' && place + 1 < source.size() && source.at(place + 1) == u'\n';
        place += lineEnd ? 2 : 1;
    }
    return place;
}

bool isCopy(const QEvent &event)
{
    return event.type() == QEvent::KeyPress
        && static_cast<const QKeyEvent &>(event).matches(QKeySequence::Copy);
}

bool maySelect(const QEvent &event)
{
    return event.type() == QEvent::KeyPress || event.type() == QEvent::MouseButtonRelease;
}

} // namespace

QString selectedSource(const QString &source, qsizetype start, qsizetype end)
{
    const qsizetype from = walk(source, 0, start);
    return source.sliced(from, walk(source, from, end - start) - from);
}

bool ExactCopy::eventFilter(QObject *watched, QEvent *event)
{
    if (isCopy(*event)) {
        if (const QString text = selection(); !text.isEmpty()) {
            QGuiApplication::clipboard()->setText(text);
        }
        return true;
    }
    if (maySelect(*event)) {
        // After the edit has selected, and has offered its own copy.
        QMetaObject::invokeMethod(this, &ExactCopy::mendSelection, Qt::QueuedConnection);
    }
    return ItemFilter::eventFilter(watched, event);
}

QString ExactCopy::selection() const
{
    return selectedSource(m_source, item()->property("selectionStart").toInt(),
                          item()->property("selectionEnd").toInt());
}

void ExactCopy::mendSelection() const
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (!item() || !clipboard->supportsSelection() || !clipboard->ownsSelection()) {
        return;
    }
    if (const QString text = selection(); !text.isEmpty()) {
        clipboard->setText(text, QClipboard::Selection);
    }
}
