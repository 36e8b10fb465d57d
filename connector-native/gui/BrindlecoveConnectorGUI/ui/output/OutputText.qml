import QtQuick
import BrindlecoveConnectorGUI

// What the connector printed, whole and as it is: selectable, and copied exactly.
TextEdit {
    id: text

    required property string source
    // What the output is of.
    required property string accessibleTitle
    // Nothing in a fixed font needs either but complex scripts, which get their shaping anyway; in a long
    // output they take a second.
    readonly property bool refined: !LongText.isLong(source)
    // A text that is there before its width is laid out twice.
    property bool complete: false

    Accessible.ignored: !visible
    Accessible.name: accessibleTitle
    Accessible.readOnly: true
    Accessible.role: Accessible.EditableText
    activeFocusOnTab: true
    color: Style.output
    font.family: Style.fixedFontFamily
    font.kerning: refined
    font.pixelSize: Style.bodySize
    font.preferShaping: refined
    readOnly: true
    selectByKeyboard: true
    selectByMouse: true
    selectedTextColor: Style.accentText
    selectionColor: Style.accent
    text: complete ? LongText.inFewParagraphs(source) : ""
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap

    Component.onCompleted: complete = true
    onVisibleChanged: if (visible)
        AssistiveTechnology.tellShown(text)

    ExactCopy {
        item: text
        source: text.source
    }

    HoverHandler {
        cursorShape: Qt.IBeamCursor
    }
}
