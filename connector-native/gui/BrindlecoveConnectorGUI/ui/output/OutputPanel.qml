import QtQuick
import BrindlecoveConnectorGUI

// A titled box of fixed height that scrolls raw output.
Column {
    id: panel

    required property string title
    required property string body

    spacing: Style.blockSpacing

    Label {
        color: Style.headline
        font.bold: true
        text: panel.title
        width: parent.width
    }

    Box {
        borderColor: Style.panelBorder
        color: Style.panel
        height: Style.panelBodyHeight + 2 * Style.panelPadding
        radius: Style.panelRadius
        width: parent.width

        ScrollArea {
            id: scroller

            anchors.fill: parent
            anchors.margins: Style.panelPadding

            content: OutputText {
                id: output

                accessibleTitle: panel.title
                source: panel.body === "" ? "No data" : panel.body
            }

            TouchScrolling {
                area: scroller
            }
        }

        ScrollBar {
            area: scroller
            anchors.rightMargin: -Style.panelPadding
        }

        FocusRing {
            controlRadius: Style.panelRadius
            item: output
        }
    }
}
