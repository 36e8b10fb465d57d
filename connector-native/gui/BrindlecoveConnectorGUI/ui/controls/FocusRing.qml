import QtQuick
import BrindlecoveConnectorGUI

// Outlines its parent while that has the keyboard focus and got it by the keyboard.
Rectangle {
    id: ring

    property Item control: parent
    property real controlRadius: Style.buttonRadius

    anchors.fill: parent
    anchors.margins: -(Style.focusRingGap + Style.focusRingWidth)
    border.color: Style.accent
    border.width: Style.focusRingWidth
    color: "transparent"
    radius: controlRadius + Style.focusRingGap + Style.focusRingWidth
    visible: focus.active

    KeyboardFocus {
        id: focus

        item: ring.control
    }
}
