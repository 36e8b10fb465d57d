import QtQuick
import BrindlecoveConnectorGUI

// A single-line field. It shows fieldText and reports each edit; a masked one gives its content away nowhere.
Surface {
    id: field

    required property string fieldText
    required property string placeholder
    property bool masked: false

    signal edited(string text)

    borderColor: Style.buttonBorder
    color: Style.field
    implicitHeight: Math.ceil(input.implicitHeight)
    radius: Style.fieldRadius

    TextInput {
        id: input

        Accessible.name: field.placeholder
        Accessible.passwordEdit: field.masked
        Accessible.role: Accessible.EditableText
        activeFocusOnTab: true
        anchors.fill: parent
        bottomPadding: Style.fieldPadding
        clip: true
        color: Style.headline
        echoMode: field.masked ? TextInput.Password : TextInput.Normal
        font.pixelSize: Style.bodySize
        inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase | Qt.ImhSensitiveData
        leftPadding: Style.fieldSidePadding
        passwordCharacter: "•"
        rightPadding: Style.fieldSidePadding
        selectByMouse: true
        selectedTextColor: Style.accentText
        selectionColor: Style.accent
        text: field.fieldText
        topPadding: Style.fieldPadding
        verticalAlignment: TextInput.AlignVCenter

        onTextEdited: field.edited(text)
    }

    Text {
        anchors.fill: parent
        anchors.leftMargin: Style.fieldSidePadding
        anchors.rightMargin: Style.fieldSidePadding
        color: Style.placeholder
        elide: Text.ElideRight
        font.pixelSize: Style.bodySize
        text: field.placeholder
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        visible: input.length === 0 && input.preeditText === ""
    }

    HoverHandler {
        cursorShape: Qt.IBeamCursor
    }

    FocusRing {
        control: input
        controlRadius: Style.fieldRadius
    }
}
