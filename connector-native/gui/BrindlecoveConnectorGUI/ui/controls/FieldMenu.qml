import QtQuick
import BrindlecoveConnectorGUI

// The context menu of a field.
ContextMenu {
    id: menu

    required property FieldInput target

    ContextMenuEntry {
        enabled: menu.target.canUndo
        text: "Undo"

        onTriggered: menu.target.undo()
    }

    ContextMenuEntry {
        enabled: menu.target.canRedo
        text: "Redo"

        onTriggered: menu.target.redo()
    }

    ContextMenuEntry {
        enabled: menu.target.selectedText !== ""
        text: "Cut"

        onTriggered: menu.target.cut()
    }

    ContextMenuEntry {
        enabled: menu.target.selectedText !== ""
        text: "Copy"

        onTriggered: menu.target.copy()
    }

    ContextMenuEntry {
        enabled: menu.target.canPaste
        text: "Paste"

        onTriggered: menu.target.pasteLine()
    }

    ContextMenuEntry {
        enabled: menu.target.selectedText !== ""
        text: "Delete"

        onTriggered: menu.target.remove(menu.target.selectionStart, menu.target.selectionEnd)
    }

    ContextMenuEntry {
        enabled: menu.target.length > 0
        text: "Select all"

        onTriggered: menu.target.selectAll()
    }
}
