import QtQuick
import BrindlecoveConnectorGUI

// The connector's raw answers about the server and the binding.
DualPanel {
    id: details

    required property ConnectorViewModel viewModel
    readonly property string binding: details.viewModel.lastBindingOutput
    readonly property string disconnection: details.viewModel.lastDisconnectOutput
    readonly property string status: details.viewModel.lastStatusOutput

    // On the left the server's answer follows a status even when it is empty; on the right empty answers are left
    // out.
    leftBody: (details.status === "" ? "" : details.status + "\n\n") + details.viewModel.lastServerOutput
    leftTitle: "Connector / server"
    rightBody: details.binding + (details.binding === "" || details.disconnection === "" ? "" : "\n\n")
        + details.disconnection
    rightTitle: "Binding result"
}
