import QtQuick
import BrindlecoveConnectorGUI

// A titled button. The whole padded box takes the press.
PressArea {
    id: button

    required property string title
    property bool prominent: false
    property color fill: prominent ? Style.accent : Style.button
    property real sidePadding: Style.buttonSidePadding
    property alias face: face

    Accessible.name: title
    Accessible.role: Accessible.Button
    implicitHeight: Math.ceil(label.implicitHeight) + 2 * Style.buttonPadding
    implicitWidth: Math.ceil(label.implicitWidth) + 2 * sidePadding

    Box {
        id: face

        anchors.fill: parent
        borderColor: button.prominent ? "transparent" : Style.buttonBorder
        color: button.fill
        radius: Style.buttonRadius
    }

    Text {
        id: label

        color: button.prominent ? Style.accentText : Style.buttonText
        font.pixelSize: Style.bodySize
        text: button.title
        textFormat: Text.PlainText
        // On whole pixels: Qt 6.4 and 6.8 round a centred position differently.
        x: Math.floor((button.width - width) / 2)
        y: Math.floor((button.height - height) / 2)
    }

    FocusRing {
        controlRadius: face.radius
        item: button
    }
}
