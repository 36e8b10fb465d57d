import QtQuick
import BrindlecoveConnectorGUI

// A field under its caption, which is its placeholder too.
Column {
    id: column

    required property string caption
    property alias fieldText: field.fieldText
    property alias masked: field.masked

    signal edited(string text)

    spacing: Style.blockSpacing

    Label {
        font.pixelSize: Style.captionSize
        text: column.caption
        width: parent.width
    }

    InputField {
        id: field

        placeholder: column.caption
        width: parent.width

        onEdited: text => column.edited(text)
    }
}
