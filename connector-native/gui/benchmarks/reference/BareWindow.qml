import QtQuick

// The least that can be called a window of Qt Quick: one text, on as many pixels as the program paints.
Window {
    height: 760
    title: "Bare window"
    visible: true
    width: 1120

    Text {
        text: "One text"
    }
}
