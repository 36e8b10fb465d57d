import QtQuick
import BrindlecoveConnectorGUI

// One run of the connector: its title and everything it printed.
Item {
    id: entry

    required property string title
    required property string output

    implicitHeight: box.y + box.height

    Label {
        id: heading

        color: Style.headline
        font.bold: true
        text: entry.title
        width: parent.width
    }

    Box {
        id: box

        anchors.top: heading.bottom
        anchors.topMargin: Style.blockSpacing
        borderColor: Style.panelBorder
        color: Style.panel
        height: (entry.output === "" ? 0 : text.height) + 2 * Style.panelPadding
        radius: Style.panelRadius
        width: parent.width

        OutputText {
            id: text

            accessibleTitle: entry.title
            source: entry.output
            visible: entry.output !== ""
            width: parent.width - 2 * Style.panelPadding
            x: Style.panelPadding
            y: Style.panelPadding
        }

        FocusRing {
            controlRadius: Style.panelRadius
            item: text
        }
    }
}
