import QtQuick
import BrindlecoveConnectorGUI

// The context menu of an output.
ContextMenu {
    id: menu

    required property OutputView target

    ContextMenuEntry {
        enabled: menu.target.hasSelection
        text: "Copy"

        onTriggered: menu.target.copy()
    }

    ContextMenuEntry {
        text: "Select all"

        onTriggered: menu.target.selectAll()
    }
}
