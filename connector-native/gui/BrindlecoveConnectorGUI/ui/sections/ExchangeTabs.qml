pragma ComponentBehavior: Bound

import QtQuick
import BrindlecoveConnectorGUI

// The row of exchange tabs. It knows the catalogue and the selected id, and reports a press.
Row {
    id: tabs

    property alias exchanges: repeater.model
    required property string selectedId

    signal select(string exchangeId)

    spacing: Style.rowSpacing

    Repeater {
        id: repeater

        delegate: PlainButton {
            id: tab

            required property int index
            required property var modelData
            readonly property bool selected: modelData.id === tabs.selectedId

            Accessible.role: Accessible.PageTab
            Accessible.selected: selected
            face.radius: Style.tabRadius
            face.shadowBlur: selected ? Style.selectedTabShadowBlur : Style.tabShadowBlur
            face.shadowColor: selected ? Style.selectedTabShadow : Style.tabShadow
            face.shadowOffset: selected ? Style.selectedTabShadowOffset : Style.tabShadowOffset
            prominent: selected
            sidePadding: Style.tabSidePadding
            title: modelData.name

            Keys.onLeftPressed: repeater.itemAt(index - 1)?.forceActiveFocus(Qt.BacktabFocusReason)
            Keys.onRightPressed: repeater.itemAt(index + 1)?.forceActiveFocus(Qt.TabFocusReason)
            onSelectedChanged: AssistiveTechnology.tellSelected(tab)
            onTriggered: tabs.select(modelData.id)
        }
    }
}
