import QtQuick
import BrindlecoveConnectorGUI

// The box of a single-line field, and the placeholder in it. The field shows fieldText and reports each edit.
Box {
    id: frame

    required property TextInput input
    required property string fieldText
    required property string placeholder

    signal edited(string text)

    borderColor: Style.buttonBorder
    color: Style.field
    implicitHeight: Math.ceil(input.implicitHeight)
    radius: Style.fieldRadius

    Text {
        anchors.fill: parent
        anchors.leftMargin: Style.fieldSidePadding
        anchors.rightMargin: Style.fieldSidePadding
        color: Style.placeholder
        elide: Text.ElideRight
        font.pixelSize: Style.bodySize
        text: frame.placeholder
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        visible: frame.input.length === 0 && frame.input.preeditText === ""
    }

    FocusRing {
        control: frame.input
        controlRadius: Style.fieldRadius
    }
}
