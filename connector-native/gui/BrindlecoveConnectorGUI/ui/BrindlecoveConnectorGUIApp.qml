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

    // Without a window manager nothing else keeps the window at its minimum size.
    onHeightChanged: height = Math.max(height, minimumHeight)
    onWidthChanged: width = Math.max(width, minimumWidth)

    ContentView {
        anchors.fill: parent
    }

    Shortcut {
        // The standard sequence for quitting has no keys outside of GNOME and KDE.
        sequences: ["Ctrl+W", "Ctrl+Q"]

        onActivated: window.close()
    }
}
