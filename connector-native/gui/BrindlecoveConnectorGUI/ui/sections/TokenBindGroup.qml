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

        SectionLoader {
            needed: group.viewModel.tokenDetailsExpanded
            width: parent.width

            Component.onCompleted: setSource("BindDetails.qml", { viewModel: group.viewModel })
        }
    }
}
