#pragma once

#include "ui/platform/itemfilter.h"

#include <QPointF>
#include <QUrl>

/// Opens the context menu of an item: on a press of the right mouse button, on the Menu key and on Shift+F10.
/// The menu, and the QML module that it needs, are loaded when it is opened; it is destroyed when it has
/// closed. Main thread only.
class ContextMenuOpener : public ItemFilter
{
    Q_OBJECT
    QML_ELEMENT
    /// The file of the menu, seen from the QML file in which the opener stands: a ContextMenu with a required
    /// property `target`, which is set to the item.
    Q_PROPERTY(QUrl menu MEMBER m_menu NOTIFY menuChanged)
    Q_PROPERTY(bool open READ isOpen NOTIFY openChanged)

public:
    enum class Way { Pointer, Keyboard };

    explicit ContextMenuOpener(QObject *parent = nullptr);

    [[nodiscard]] bool isOpen() const { return m_isOpen; }

    /// At a point of the item, which gets the focus.
    Q_INVOKABLE void openAt(QPointF point);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void menuChanged();
    void openChanged();

private:
    void acceptRightButton();
    void open(QPointF point, Way way);
    void setOpen(bool isOpen);
    Q_SLOT void forget() { setOpen(false); }

    QUrl m_menu;
    bool m_isOpen = false;
};
