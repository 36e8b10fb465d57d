import QtQuick
import BrindlecoveConnectorGUI

// A single-line field that masks its text, and gives it away nowhere.
FieldFrame {
    id: field

    input: input

    FieldInput {
        id: input

        readonly property string accessibleTitle: field.placeholder
        // By having it, the input is known as masked.
        readonly property SecretGuard guard: SecretGuard {
            item: input
        }

        // Not the role of a text: for that one, Qt would send what is typed to assistive technologies.
        Accessible.ignored: !visible
        Accessible.role: Accessible.Client
        echoMode: TextInput.Password
        passwordCharacter: "•"
        menu: Qt.resolvedUrl("SecretMenu.qml")
        text: field.fieldText

        onTextEdited: field.edited(text)
    }
}
