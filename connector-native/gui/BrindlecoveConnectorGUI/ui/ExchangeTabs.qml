pragma ComponentBehavior: Bound

import QtQuick
import BrindlecoveConnectorGUI

// The row of exchange tabs. It knows the catalogue and the selected id, and reports a press.
Row {
    id: tabs

    property alias exchanges: repeater.model
    required property string selectedId

    signal selected(string exchangeId)

    spacing: Style.rowSpacing

    Repeater {
        id: repeater

        delegate: PlainButton {
            id: tab

            required property int index
            required property var modelData
            readonly property bool current: modelData.id === tabs.selectedId

            Accessible.role: Accessible.PageTab
            Accessible.selectable: true
            Accessible.selected: current
            face.radius: Style.tabRadius
            face.shadowBlur: current ? Style.selectedTabShadowBlur : Style.tabShadowBlur
            face.shadowColor: current ? Style.selectedTabShadow : Style.tabShadow
            face.shadowOffset: current ? Style.selectedTabShadowOffset : Style.tabShadowOffset
            prominent: current
            sidePadding: Style.tabSidePadding
            title: modelData.name

            Keys.onLeftPressed: repeater.itemAt(index - 1)?.forceActiveFocus(Qt.BacktabFocusReason)
            Keys.onRightPressed: repeater.itemAt(index + 1)?.forceActiveFocus(Qt.TabFocusReason)
            onTriggered: tabs.selected(modelData.id)
        }
    }
}
