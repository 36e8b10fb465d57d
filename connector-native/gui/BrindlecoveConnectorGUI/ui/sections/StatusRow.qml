import QtQuick
import BrindlecoveConnectorGUI

// The three status tiles, equally wide.
Row {
    id: cards

    required property ConnectorViewModel viewModel
    readonly property real tileWidth: (width - 2 * spacing) / 3

    spacing: Style.columnSpacing

    StatusCard {
        good: cards.viewModel.connectorGood
        title: "Connector"
        width: cards.tileWidth
        word: cards.viewModel.connectorStatus
    }

    StatusCard {
        good: cards.viewModel.serverGood
        title: "Server"
        width: cards.tileWidth
        word: cards.viewModel.serverStatus
    }

    StatusCard {
        good: cards.viewModel.bindingGood
        title: "Binding"
        width: cards.tileWidth
        word: cards.viewModel.bindingStatus
    }
}
