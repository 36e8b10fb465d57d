import QtQuick
import BrindlecoveConnectorGUI

// The window's title and subtitle, and the button that refreshes everything.
Item {
    id: header

    required property ConnectorViewModel viewModel

    implicitHeight: Math.max(texts.height, refresh.height)

    Column {
        id: texts

        anchors.left: parent.left
        anchors.right: refresh.left
        anchors.rightMargin: Style.rowSpacing
        anchors.verticalCenter: parent.verticalCenter
        spacing: Style.titleSpacing

        Label {
            color: Style.title
            font.bold: true
            font.pixelSize: Style.largeTitleSize
            text: "Brindlecove Connector"
            width: parent.width
        }

        Label {
            text: "Token-first bridge between web terminal, server and exchange APIs"
            width: parent.width
        }
    }

    PlainButton {
        id: refresh

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        // The one standard button, with hover and pressed looks.
        fill: down ? Style.accentPressed : hover.hovered ? Style.accentHovered : Style.accent
        prominent: true
        title: "Refresh all"

        onTriggered: header.viewModel.refreshAll()

        HoverHandler {
            id: hover
        }
    }
}
