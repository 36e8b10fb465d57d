import QtQuick
import BrindlecoveConnectorGUI

// The application's one window.
Window {
    id: window

    // A Wayland compositor that tiles sizes the window before it activates it. Qt would not let a tile be smaller
    // than the minimum, so a tiled window has none.
    property bool tiled: Qt.platform.pluginName.startsWith("wayland")

    height: Style.minimumHeight
    minimumHeight: tiled ? 0 : Style.minimumHeight
    minimumWidth: tiled ? 0 : Style.minimumWidth
    title: "Brindlecove Connector"
    visible: true
    width: Style.minimumWidth

    onActiveChanged: tiled = tiled && (width !== Style.minimumWidth || height !== Style.minimumHeight)
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
