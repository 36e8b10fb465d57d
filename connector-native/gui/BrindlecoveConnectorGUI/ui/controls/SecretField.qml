import QtQuick
import BrindlecoveConnectorGUI

// A single-line field that masks its text, and gives it away nowhere.
FieldFrame {
    id: field

    input: input

    FieldInput {
        id: input

        // By having it, the input is known as masked.
        readonly property SecretGuard guard: SecretGuard {
            item: input
        }

        accessibleTitle: field.placeholder
        echoMode: TextInput.Password
        passwordCharacter: "•"
        menu: Qt.resolvedUrl("SecretMenu.qml")
        text: field.fieldText

        onTextEdited: field.edited(text)
        onVisibleChanged: if (visible)
            AssistiveTechnology.tellShown(input)
    }
}
