import QtQuick
import BrindlecoveConnectorGUI

// The application's one window.
Window {
    id: window

    // Qt would not let a tile of a Wayland compositor be smaller than the minimum, so a tiled window has none.
    property bool tiled: Qt.platform.pluginName.startsWith("wayland")

    height: Style.minimumHeight
    minimumHeight: tiled ? 0 : Style.minimumHeight
    minimumWidth: tiled ? 0 : Style.minimumWidth
    title: "Brindlecove Connector"
    visible: true
    width: Style.minimumWidth

    // Without a window manager nothing else keeps the window at its minimum size.
    onHeightChanged: height = Math.max(height, minimumHeight)
    onWidthChanged: width = Math.max(width, minimumWidth)

    ContentView {
        anchors.fill: parent
    }

    // A tile's size may follow a while after the window is active, once other windows have made room. One that keeps the
    // size it asked for is not tiled.
    Timer {
        interval: 500
        running: window.tiled && window.active && window.width === Style.minimumWidth
                 && window.height === Style.minimumHeight

        onTriggered: window.tiled = false
    }

    Shortcut {
        // The standard sequence for quitting has no keys outside of GNOME and KDE.
        sequences: ["Ctrl+W", "Ctrl+Q"]

        onActivated: window.close()
    }
}
