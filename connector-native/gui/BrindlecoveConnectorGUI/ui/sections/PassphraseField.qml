import QtQuick
import BrindlecoveConnectorGUI

// The passphrase of exchanges that need one.
CaptionedField {
    id: column

    required property ConnectorViewModel viewModel

    caption: "Passphrase"

    SecretField {
        fieldText: column.viewModel.selectedPassphrase
        placeholder: "Passphrase"
        width: parent.width

        onEdited: text => column.viewModel.selectedPassphrase = text
    }
}
