import QtQuick
import BrindlecoveConnectorGUI

// The three steps of the connector's own update, and whether one has been taken.
Column {
    id: group

    required property ConnectorViewModel viewModel

    spacing: Style.groupSpacing

    Row {
        spacing: Style.rowSpacing

        ActionButton {
            buttonId: "check-update"
            title: "Check for updates"
            viewModel: group.viewModel

            onAction: group.viewModel.checkUpdate()
        }

        ActionButton {
            buttonId: "download-update"
            title: "Download update"
            viewModel: group.viewModel

            onAction: group.viewModel.downloadUpdate()
        }

        ActionButton {
            buttonId: "apply-update"
            prominent: true
            title: "Install update"
            viewModel: group.viewModel

            onAction: group.viewModel.applyUpdate()
        }
    }

    Label {
        text: group.viewModel.lastUpdateOutput === ""
            ? "No update action yet" : "Update action completed. Technical output is available below."
    }
}
