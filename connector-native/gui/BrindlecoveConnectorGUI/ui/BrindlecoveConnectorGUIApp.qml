import QtQuick
import BrindlecoveConnectorGUI

// The application's one window.
Window {
    id: window

    height: minimumHeight
    minimumHeight: Style.minimumHeight
    minimumWidth: Style.minimumWidth
    title: "Brindlecove Connector"
    visible: true
    width: minimumWidth

    // Without a window manager nobody else holds the window to its minimum.
    onHeightChanged: height = Math.max(height, minimumHeight)
    onWidthChanged: width = Math.max(width, minimumWidth)

    ContentView {
        anchors.fill: parent
    }

    Shortcut {
        // Not StandardKey.Quit, which is the same wherever there is one: outside of GNOME and KDE there is none.
        sequences: [StandardKey.Close, "Ctrl+Q"]

        onActivated: window.close()
    }
}
