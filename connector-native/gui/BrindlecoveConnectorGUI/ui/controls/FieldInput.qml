import QtQuick
import BrindlecoveConnectorGUI

// The text input inside a field's frame.
TextInput {
    id: input

    property alias menu: opener.menu

    activeFocusOnTab: true
    bottomPadding: Style.fieldPadding
    clip: true
    color: Style.headline
    font.pixelSize: Style.bodySize
    // A key or a token is nothing to complete, to capitalise or to remember.
    inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase | Qt.ImhSensitiveData
    leftPadding: Style.fieldSidePadding
    rightPadding: Style.fieldSidePadding
    selectByMouse: true
    selectedTextColor: Style.accentText
    selectionColor: Style.accent
    topPadding: Style.fieldPadding
    verticalAlignment: TextInput.AlignVCenter

    ContextMenuOpener {
        id: opener

        item: input
    }
    TextAnnouncer {
        item: input
    }
    HoverHandler {
        cursorShape: Qt.IBeamCursor
    }
}
