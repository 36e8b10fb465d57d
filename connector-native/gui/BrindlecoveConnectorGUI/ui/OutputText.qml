import QtQuick
import BrindlecoveConnectorGUI

// What the connector printed, whole and as it is: selectable, and copied exactly.
TextEdit {
    id: text

    required property string source
    // What the output is of.
    required property string accessibleTitle

    Accessible.ignored: !visible
    Accessible.name: accessibleTitle
    Accessible.readOnly: true
    Accessible.role: Accessible.EditableText
    activeFocusOnTab: true
    color: Style.output
    font.family: Style.fixedFontFamily
    font.pixelSize: Style.bodySize
    readOnly: true
    selectByKeyboard: true
    selectByMouse: true
    selectedTextColor: Style.accentText
    selectionColor: Style.accent
    text: source
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap

    ExactCopy {
        item: text
        source: text.source
    }

    HoverHandler {
        cursorShape: Qt.IBeamCursor
    }
}
