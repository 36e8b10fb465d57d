import QtQuick
import QtQuick.Templates as T
import BrindlecoveConnectorGUI

// An entry of a context menu: `text` is what it shows, `triggered` what it does.
T.MenuItem {
    id: entry

    hoverEnabled: true
    implicitHeight: Math.ceil(implicitContentHeight) + topPadding + bottomPadding
    leftPadding: Style.menuEntrySidePadding
    rightPadding: Style.menuEntrySidePadding
    verticalPadding: Style.menuEntryPadding

    background: Rectangle {
        color: entry.highlighted ? Style.accent : "transparent"
        radius: Style.fieldRadius
    }
    contentItem: Text {
        color: entry.highlighted ? Style.accentText : entry.enabled ? Style.headline : Style.disabledText
        elide: Text.ElideRight
        font.pixelSize: Style.bodySize
        text: entry.text
        textFormat: Text.PlainText
    }

    // The first letter goes to the entry; where entries share it, in turn.
    Shortcut {
        enabled: entry.enabled
        sequence: entry.text.charAt(0)

        onActivated: entry.forceActiveFocus(Qt.ShortcutFocusReason)
        onActivatedAmbiguously: entry.forceActiveFocus(Qt.ShortcutFocusReason)
    }
}
