import QtQuick
import BrindlecoveConnectorGUI

// A field under its caption.
Column {
    id: column

    required property string caption

    spacing: Style.blockSpacing

    Label {
        font.pixelSize: Style.captionSize
        text: column.caption
        width: parent.width
    }
}
