import QtQuick

// Creates a part of the window, whose file and initial properties are set with setSource(), while it is needed. The
// engine reads the file of such a part when it is first needed, and that of a named type before the first frame.
Loader {
    property bool needed: false

    active: false
    // It keeps the height of a part that is gone.
    visible: false

    // Assistive technologies are told of what is shown and hidden, not of what is created and destroyed.
    onNeededChanged: {
        active = active || needed;
        visible = needed;
        active = needed;
    }
    // A file that is not there is a fault of the program.
    onStatusChanged: if (status === Loader.Error)
        Qt.exit(1)
}
