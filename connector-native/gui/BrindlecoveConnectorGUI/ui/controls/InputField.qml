import QtQuick
import BrindlecoveConnectorGUI

// A single-line field.
FieldFrame {
    id: field

    input: input

    FieldInput {
        id: input

        accessibleTitle: field.placeholder
        menu: "FieldMenu.qml"
        text: field.fieldText

        onTextEdited: field.edited(text)
    }
}
