import QtQuick
import BrindlecoveConnectorGUI

// The box of a single-line field, its input and placeholder. The field shows fieldText and reports each edit.
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

    FieldPadding {
        anchors.fill: parent
        input: frame.input
    }

    // A text wider than the box is clipped at the padding.
    Item {
        id: viewport

        anchors.fill: parent
        anchors.leftMargin: Style.fieldSidePadding
        anchors.rightMargin: Style.fieldSidePadding
        clip: true
    }

    HoverHandler {
        cursorShape: Qt.IBeamCursor
    }

    FocusRing {
        controlRadius: Style.fieldRadius
        item: frame.input
    }
}
