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

    SectionLoader {
        needed: group.viewModel.selectedExchange.needsPassphrase
        width: parent.width

        Component.onCompleted: setSource("PassphraseField.qml", { viewModel: group.viewModel })
    }

    FillingRow {
        filling: status
        spacing: Style.rowSpacing
        width: parent.width

        ActionButton {
            buttonId: "validate-save"
            prominent: true
            title: group.viewModel.selectedDraft.loadedFromVault ? "Update and save keys" : "Validate and save keys"
            viewModel: group.viewModel

            onAction: group.viewModel.validateSelectedExchange()
        }

        ActionButton {
            buttonId: "load-balance"
            title: "Load balance"
            viewModel: group.viewModel

            onAction: group.viewModel.loadBalance()
        }

        ActionButton {
            buttonId: "delete-credentials"
            title: "Delete"
            viewModel: group.viewModel

            onAction: group.viewModel.deleteSelectedExchangeCredentials()
        }

        Label {
            id: status

            color: group.viewModel.selectedDraft.valid ? Style.greenOnLight : Style.status
            horizontalAlignment: Text.AlignRight
            text: "Status: " + group.viewModel.selectedDraft.status
        }
    }

    SectionLoader {
        needed: group.viewModel.hasSelectedBalance
        width: parent.width

        Component.onCompleted: setSource("BalancePanel.qml", { viewModel: group.viewModel })
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
