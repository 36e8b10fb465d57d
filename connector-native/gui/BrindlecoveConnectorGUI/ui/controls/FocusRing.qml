pragma ComponentBehavior: Bound

import QtQuick
import BrindlecoveConnectorGUI

// Outlines its parent while an item has got the focus by the keyboard.
KeyboardFocus {
    id: keyboardFocus

    property real controlRadius: Style.buttonRadius

    ring: Box {
        anchors.fill: parent
        anchors.margins: -(Style.focusRingGap + Style.focusRingWidth)
        borderColor: Style.accent
        borderWidth: Style.focusRingWidth
        radius: keyboardFocus.controlRadius + Style.focusRingGap + Style.focusRingWidth
    }
}
