import QtQuick
import BrindlecoveConnectorGUI

// A titled button. The padded face takes the press, not its text alone.
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

        anchors.centerIn: parent
        color: button.prominent ? Style.accentText : Style.buttonText
        font.pixelSize: Style.bodySize
        text: button.title
        textFormat: Text.PlainText
    }

    FocusRing {
        controlRadius: face.radius
    }
}
