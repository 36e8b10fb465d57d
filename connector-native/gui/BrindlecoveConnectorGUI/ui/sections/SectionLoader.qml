import QtQuick

// Creates a part of the window, whose file and initial properties are set with setSource(), while it is active. The
// engine reads the file of such a part when it is first needed, and that of a named type before the first frame.
Loader {
    // It keeps the height of a part that is gone.
    visible: active

    // A file that is not there is a fault of the program.
    onStatusChanged: if (status === Loader.Error)
        Qt.exit(1)
}
