import QtQuick
import BrindlecoveConnectorGUI

// The context menu of a masked field: no entry copies its text.
ContextMenu {
    id: menu

    required property FieldInput target

    ContextMenuEntry {
        enabled: menu.target.canPaste
        text: "Paste"

        onTriggered: menu.target.pasteLine()
    }

    ContextMenuEntry {
        enabled: menu.target.length > 0
        text: "Select all"

        onTriggered: menu.target.selectAll()
    }
}
