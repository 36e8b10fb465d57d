import QtQuick
import BrindlecoveConnectorGUI

// Outlines its parent while that has got the focus by the keyboard.
Box {
    id: ring

    property Item control: parent
    property real controlRadius: Style.buttonRadius

    anchors.fill: parent
    anchors.margins: -(Style.focusRingGap + Style.focusRingWidth)
    borderColor: Style.accent
    borderWidth: Style.focusRingWidth
    radius: controlRadius + Style.focusRingGap + Style.focusRingWidth
    visible: focus.active

    KeyboardFocus {
        id: focus

        item: ring.control
    }
}
