pragma ComponentBehavior: Bound

import QtQuick
import BrindlecoveConnectorGUI

// Claims a bind token, watches the binding, and shows the raw answers on request.
Column {
    id: group

    required property ConnectorViewModel viewModel
    // The web application that shows the token.
    readonly property string webHost: "terminal.brindlecove.example"

    spacing: Style.groupSpacing

    FillingRow {
        filling: token
        spacing: Style.rowSpacing
        width: parent.width

        InputField {
            id: token

            fieldText: group.viewModel.bindToken
            placeholder: "Bind token from " + group.webHost

            onEdited: text => group.viewModel.bindToken = text
        }

        ActionButton {
            buttonId: "claim-token"
            prominent: true
            title: "Claim token"
            viewModel: group.viewModel

            onAction: group.viewModel.claimToken()
        }

        ActionButton {
            buttonId: "disconnect-binding"
            title: "Disconnect"
            viewModel: group.viewModel

            onAction: group.viewModel.disconnectBinding()
        }

        ActionButton {
            buttonId: "check-server"
            title: "Check server"
            viewModel: group.viewModel

            onAction: group.viewModel.checkServer()
        }
    }

    Column {
        spacing: Style.blockSpacing
        width: parent.width

        Label {
            color: Style.headline
            font.bold: true
            text: "Quick state"
            width: parent.width
        }

        Label {
            text: "Connector: " + group.viewModel.connectorStatus + " • Server: "
                + group.viewModel.serverStatus + " • Binding: " + group.viewModel.bindingStatus
            width: parent.width
        }
    }

    Column {
        spacing: Style.blockSpacing
        width: parent.width

        Item {
            implicitHeight: toggle.height
            width: parent.width

            Label {
                anchors.left: parent.left
                anchors.right: toggle.left
                anchors.rightMargin: Style.rowSpacing
                anchors.verticalCenter: parent.verticalCenter
                color: Style.headline
                font.bold: true
                text: "Token and bind details"
            }

            ActionButton {
                id: toggle

                readonly property bool expanded: group.viewModel.tokenDetailsExpanded

                anchors.right: parent.right
                buttonId: "toggle-token-details"
                title: expanded ? "Hide details" : "Show details"
                viewModel: group.viewModel

                onAction: group.viewModel.tokenDetailsExpanded = !expanded
            }
        }

        Label {
            text: "Raw token, server, and binding output is hidden by default."
            visible: !group.viewModel.tokenDetailsExpanded
            width: parent.width
        }

        // Created when it is first shown. Qt 6.4: a Loader cannot create a bound component.
        Repeater {
            model: group.viewModel.tokenDetailsExpanded ? 1 : 0

            delegate: DualPanel {
                readonly property string binding: group.viewModel.lastBindingOutput
                readonly property string disconnection: group.viewModel.lastDisconnectOutput
                readonly property string status: group.viewModel.lastStatusOutput

                // On the left the server's answer follows a status even when it is empty; on the right empty
                // answers are left out.
                leftBody: (status === "" ? "" : status + "\n\n") + group.viewModel.lastServerOutput
                leftTitle: "Connector / server"
                rightBody: binding + (binding === "" || disconnection === "" ? "" : "\n\n") + disconnection
                rightTitle: "Binding result"
                width: parent.width
            }
        }
    }
}
