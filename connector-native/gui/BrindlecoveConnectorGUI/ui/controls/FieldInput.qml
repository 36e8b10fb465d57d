import QtQuick
import BrindlecoveConnectorGUI

// The text input inside a field's frame, which it fills.
TextInput {
    id: input

    property alias menu: opener.menu
    // The accessible name.
    required property string accessibleTitle
    // The open menu has the focus, but belongs to the field.
    readonly property bool inUse: activeFocus || opener.open

    function pasteLine() {
        line.paste();
    }

    // Selects the word at a point, unless that is selected already; a masked text is a single word.
    function selectWordAt(point: point) {
        const position = positionAt(point.x, point.y, TextInput.CursorOnCharacter);
        if (position >= selectionStart && position < selectionEnd)
            return;
        cursorPosition = position;
        selectWord();
    }

    Accessible.ignored: !visible
    // Not the role of a text: for that one, Qt would send assistive technologies what a masked field holds, and
    // what others hold twice.
    Accessible.role: Accessible.Client
    activeFocusOnTab: true
    anchors.fill: parent
    // Clipped inside the padding, but as large as the field for those who ask for its place.
    anchors.leftMargin: -Style.fieldSidePadding
    anchors.rightMargin: -Style.fieldSidePadding
    // A field that loses the focus shows its beginning; one in an inactive window keeps the focus.
    autoScroll: focus || opener.open
    bottomPadding: Style.fieldPadding
    color: Style.headline
    font.pixelSize: Style.bodySize
    inputMethodHints: line.hints
    leftPadding: Style.fieldSidePadding
    // No length limit.
    maximumLength: 0x7fffffff
    // Room for the cursor after the last character.
    rightPadding: Style.fieldSidePadding + Style.textCursorWidth
    selectedTextColor: Style.accentText
    selectionColor: Style.accent
    topPadding: Style.fieldPadding
    verticalAlignment: TextInput.AlignVCenter

    // Qt 6.4: scrolled back only by the above, it is not painted anew.
    onAutoScrollChanged: follows => {
        if (!follows) {
            ensureVisible(length);
            ensureVisible(0);
        }
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
    TextTouch {
        item: input

        onHeld: point => {
            input.selectWordAt(point);
            opener.openAt(point);
        }
    }
}
