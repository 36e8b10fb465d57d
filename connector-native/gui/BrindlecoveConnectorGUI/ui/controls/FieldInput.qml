import QtQuick
import BrindlecoveConnectorGUI

// The text input inside a field's frame, which it fills.
TextInput {
    id: input

    property alias menu: opener.menu
    // What the field is for.
    required property string accessibleTitle
    // Its menu takes the focus, but is a part of it.
    readonly property bool inUse: activeFocus || opener.open

    function pasteLine() {
        line.paste();
    }

    Accessible.ignored: !visible
    // Not the role of a text: for that one, Qt would send assistive technologies what a masked field holds, and
    // what others hold twice.
    Accessible.role: Accessible.Client
    activeFocusOnTab: true
    anchors.fill: parent
    anchors.leftMargin: -Style.fieldSidePadding
    anchors.rightMargin: -Style.fieldSidePadding
    // Left, it shows its beginning. The window may come and go meanwhile.
    autoScroll: focus || opener.open
    bottomPadding: Style.fieldPadding
    color: Style.headline
    font.pixelSize: Style.bodySize
    // A key or a token is nothing to complete, to capitalise or to remember.
    inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase | Qt.ImhSensitiveData
    leftPadding: Style.fieldSidePadding
    // No length is cut.
    maximumLength: 0x7fffffff
    // Behind the last character there is room for the cursor.
    rightPadding: Style.fieldSidePadding + Style.textCursorWidth
    selectByMouse: true
    selectedTextColor: Style.accentText
    selectionColor: Style.accent
    topPadding: Style.fieldPadding
    verticalAlignment: TextInput.AlignVCenter

    // Qt 6.4: scrolled back only by the above, it is not painted anew.
    onAutoScrollChanged: if (!autoScroll) {
        ensureVisible(length);
        ensureVisible(0);
    }

    ContextMenuOpener {
        id: opener

        item: input
    }
    SingleLine {
        id: line

        item: input
    }
    TextAnnouncer {
        item: input
    }
    HoverHandler {
        cursorShape: Qt.IBeamCursor
    }
}
