import QtQuick
import BrindlecoveConnectorGUI

// The credentials and the balance of the selected exchange.
Column {
    id: group

    required property ConnectorViewModel viewModel

    spacing: Style.groupSpacing

    ExchangeTabs {
        exchanges: group.viewModel.exchanges
        selectedId: group.viewModel.selectedExchangeId

        onSelect: exchangeId => group.viewModel.selectedExchangeId = exchangeId
    }

    Row {
        id: keyRow

        readonly property real columnWidth: (width - spacing) / 2

        spacing: Style.columnSpacing
        width: parent.width

        CaptionedField {
            caption: "API key"
            width: keyRow.columnWidth

            InputField {
                fieldText: group.viewModel.selectedApiKey
                placeholder: "API key"
                width: parent.width

                onEdited: text => group.viewModel.selectedApiKey = text
            }
        }

        CaptionedField {
            caption: "API secret"
            width: keyRow.columnWidth

            SecretField {
                fieldText: group.viewModel.selectedApiSecret
                placeholder: "API secret"
                width: parent.width

                onEdited: text => group.viewModel.selectedApiSecret = text
            }
        }
    }

    CaptionedField {
        caption: "Passphrase"
        visible: group.viewModel.selectedExchange.needsPassphrase
        width: parent.width

        SecretField {
            fieldText: group.viewModel.selectedPassphrase
            placeholder: "Passphrase"
            width: parent.width

            onEdited: text => group.viewModel.selectedPassphrase = text
        }
    }

    Row {
        id: commandRow

        readonly property real buttonsWidth: validate.width + balance.width + remove.width + 3 * spacing

        spacing: Style.rowSpacing
        width: parent.width

        ActionButton {
            id: validate

            buttonId: "validate-save"
            prominent: true
            title: group.viewModel.selectedDraft.loadedFromVault ? "Update and save keys" : "Validate and save keys"
            viewModel: group.viewModel

            onAction: group.viewModel.validateSelectedExchange()
        }

        ActionButton {
            id: balance

            buttonId: "load-balance"
            title: "Load balance"
            viewModel: group.viewModel

            onAction: group.viewModel.loadBalance()
        }

        ActionButton {
            id: remove

            buttonId: "delete-credentials"
            title: "Delete"
            viewModel: group.viewModel

            onAction: group.viewModel.deleteSelectedExchangeCredentials()
        }

        Label {
            readonly property string status: group.viewModel.selectedDraft.status

            anchors.verticalCenter: parent.verticalCenter
            color: status === "valid" ? Style.greenOnLight : Style.status
            horizontalAlignment: Text.AlignRight
            text: "Status: " + status
            width: parent.width - commandRow.buttonsWidth
        }
    }

    BalancePanel {
        summary: group.viewModel.selectedBalance
        visible: group.viewModel.hasSelectedBalance
        width: parent.width
    }

    Label {
        text: "Balance not loaded yet"
        visible: !group.viewModel.hasSelectedBalance
        width: parent.width
    }

    Label {
        font.pixelSize: Style.captionSize
        text: "Live credential validation is enabled for Bybit, OKX, Gate, BingX, KuCoin, and Bitget."
        width: parent.width
    }
}
