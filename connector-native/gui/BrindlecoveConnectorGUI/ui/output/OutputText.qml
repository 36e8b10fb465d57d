import QtQuick
import BrindlecoveConnectorGUI

// What the connector printed, in the look of the window.
OutputView {
    id: text

    required accessibleTitle
    required source

    Accessible.ignored: !visible
    Accessible.name: accessibleTitle
    Accessible.readOnly: true
    Accessible.role: Accessible.EditableText
    background: Style.panel
    color: Style.output
    font.family: Style.fixedFontFamily
    font.pixelSize: Style.bodySize
    selectedTextColor: Style.accentText
    selectionColor: Style.accent

    onVisibleChanged: if (visible)
        AssistiveTechnology.tellShown(text)

    ContextMenuOpener {
        id: opener

        item: text
        menu: "OutputMenu.qml"
    }
    TextTouch {
        item: text

        onHeld: point => {
            text.selectWordAt(point);
            opener.openAt(point);
        }
    }
}
