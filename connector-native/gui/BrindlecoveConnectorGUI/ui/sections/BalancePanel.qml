pragma ComponentBehavior: Bound

import QtQuick
import BrindlecoveConnectorGUI

// The balance summary of the selected exchange.
Box {
    id: panel

    required property ConnectorViewModel viewModel
    readonly property parsedBalanceView summary: viewModel.selectedBalance

    borderColor: Style.panelBorder
    color: Style.balance
    implicitHeight: lines.height + 2 * Style.balancePadding
    radius: Style.balanceRadius

    Column {
        id: lines

        anchors.left: parent.left
        anchors.margins: Style.balancePadding
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: Style.blockSpacing

        Label {
            font.pixelSize: Style.captionSize
            text: panel.summary.title
            width: parent.width
        }

        Label {
            color: Style.headline
            font.pixelSize: Style.thirdTitleSize
            font.weight: Font.DemiBold
            text: panel.summary.headline
            width: parent.width
        }

        Repeater {
            model: panel.summary.details

            delegate: Label {
                required property string modelData

                text: modelData
                width: lines.width
            }
        }
    }
}
