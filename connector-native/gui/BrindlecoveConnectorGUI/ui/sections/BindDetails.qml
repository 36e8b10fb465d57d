import QtQuick
import BrindlecoveConnectorGUI

// The connector's raw answers about the server and the binding.
DualPanel {
    id: details

    required property ConnectorViewModel viewModel
    readonly property string binding: viewModel.lastBindingOutput
    readonly property string disconnection: viewModel.lastDisconnectOutput
    readonly property string status: viewModel.lastStatusOutput

    // On the left the server's answer follows a status even when it is empty; on the right empty answers are left
    // out.
    leftBody: (status === "" ? "" : status + "\n\n") + viewModel.lastServerOutput
    leftTitle: "Connector / server"
    rightBody: binding + (binding === "" || disconnection === "" ? "" : "\n\n") + disconnection
    rightTitle: "Binding result"
}
