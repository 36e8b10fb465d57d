import QtQuick
import BrindlecoveConnectorGUI

// The box of a single-line field around its input, and the placeholder in it. The field shows fieldText and
// reports each edit.
Box {
    id: frame

    required property FieldInput input
    required property string fieldText
    required property string placeholder
    default property alias content: viewport.data

    signal edited(string text)

    borderColor: input.inUse ? Style.accent : Style.buttonBorder
    color: Style.field
    implicitHeight: Math.ceil(input.implicitHeight)
    radius: Style.fieldRadius

    Text {
        anchors.fill: viewport
        color: Style.placeholder
        elide: Text.ElideRight
        font.pixelSize: Style.bodySize
        text: frame.placeholder
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        visible: frame.input.length === 0 && frame.input.preeditText === ""
    }

    // A text wider than the box ends at the padding.
    Item {
        id: viewport

        anchors.fill: parent
        anchors.leftMargin: Style.fieldSidePadding
        anchors.rightMargin: Style.fieldSidePadding
        clip: true
        // A click on the padding is one into the text.
        containmentMask: frame.input
    }

    FocusRing {
        control: frame.input
        controlRadius: Style.fieldRadius
    }
}
