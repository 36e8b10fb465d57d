import QtQuick
import BrindlecoveConnectorGUI

// A text of the window: plain text, exposed to assistive technologies.
Text {
    id: label

    Accessible.ignored: !visible
    Accessible.name: text
    Accessible.role: Accessible.StaticText
    color: Style.secondary
    font.pixelSize: Style.bodySize
    textFormat: Text.PlainText
    wrapMode: Text.Wrap

    onVisibleChanged: if (visible)
        AssistiveTechnology.tellShown(label)
}
