#pragma once

#include "ui/platform/itemfilter.h"

#include <QClipboard>

class QDropEvent;
class QInputMethodEvent;

/// Keeps a text input to one line: line breaks are left out of what is pasted, dropped or committed by an
/// input method, and nothing else is. An input of Qt Quick would hold them and show blanks. Main thread only.
class SingleLine : public ItemFilter
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Qt::InputMethodHints hints READ hints CONSTANT)

public:
    explicit SingleLine(QObject *parent = nullptr);

    /// For the input methods of the field: they must not complete, capitalise or remember keys and tokens.
    [[nodiscard]] Qt::InputMethodHints hints() const;

    Q_INVOKABLE void paste();
    /// In place of what is selected, and undone in one step.
    Q_INVOKABLE void insert(const QString &text);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void acceptDrops();
    /// False when there is nothing to leave out: the input can do it by itself.
    [[nodiscard]] bool pasteFrom(QClipboard::Mode mode);
    [[nodiscard]] bool commit(const QInputMethodEvent &event);
    void drop(QDropEvent *event);
    void endUndoStep();
};
