import QtQuick
import BrindlecoveConnectorGUI

// A single-line field whose text is masked, and concealed from other programs.
FieldFrame {
    id: field

    input: input

    FieldInput {
        id: input

        // Also marks the input as masked for its accessible interface.
        readonly property SecretGuard guard: SecretGuard {
            item: input
        }

        accessibleTitle: field.placeholder
        echoMode: TextInput.Password
        passwordCharacter: "•"
        menu: "SecretMenu.qml"
        text: field.fieldText

        onTextEdited: field.edited(text)
        onVisibleChanged: if (visible)
            AssistiveTechnology.tellShown(input)
    }
}
