import QtQuick
import BrindlecoveConnectorGUI

// Two output panels side by side that share the width equally.
Row {
    id: panels

    required property string leftTitle
    required property string leftBody
    required property string rightTitle
    required property string rightBody
    readonly property real columnWidth: (width - spacing) / 2

    spacing: Style.columnSpacing

    OutputPanel {
        body: panels.leftBody
        title: panels.leftTitle
        width: panels.columnWidth
    }

    OutputPanel {
        body: panels.rightBody
        title: panels.rightTitle
        width: panels.columnWidth
    }
}
