import QtQuick
import QtQuick.Templates as T
import BrindlecoveConnectorGUI

// A menu that opens when it is created, at a point of its parent: see ContextMenuOpener.
T.Menu {
    id: menu

    required property point point
    required property bool byKeyboard

    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: Style.menuMargin
    // A click elsewhere closes the menu and presses nothing.
    modal: true
    padding: Style.menuPadding
    width: Style.menuWidth

    background: Box {
        borderColor: Style.buttonBorder
        color: Style.card
        radius: Style.menuRadius
        shadowBlur: Style.menuShadowBlur
        shadowColor: Style.menuShadow
        shadowOffset: Style.menuShadowOffset
    }
    contentItem: ListView {
        implicitHeight: contentHeight
        interactive: false
        model: menu.contentModel
    }

    Component.onCompleted: popup(parent, point)
    // With this reason a text keeps its selection.
    onClosed: parent?.forceActiveFocus(Qt.PopupFocusReason)
    // Opened by the keyboard, the first entry is highlighted.
    onOpened: if (byKeyboard)
        currentIndex = Array.from(contentChildren).findIndex(entry => entry.enabled)
}
