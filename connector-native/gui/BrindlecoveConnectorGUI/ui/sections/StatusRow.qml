import QtQuick
import BrindlecoveConnectorGUI

// The three status tiles, equally wide.
Row {
    id: cards

    required property ConnectorViewModel viewModel
    readonly property real tileWidth: (width - 2 * spacing) / 3

    spacing: Style.columnSpacing

    StatusCard {
        goodWord: "ready"
        title: "Connector"
        width: cards.tileWidth
        word: cards.viewModel.connectorStatus
    }

    StatusCard {
        goodWord: "reachable"
        title: "Server"
        width: cards.tileWidth
        word: cards.viewModel.serverStatus
    }

    StatusCard {
        goodWord: "authorized"
        title: "Binding"
        width: cards.tileWidth
        word: cards.viewModel.bindingStatus
    }
}
