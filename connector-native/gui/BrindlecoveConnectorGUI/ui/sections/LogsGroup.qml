import QtQuick
import BrindlecoveConnectorGUI

// The technical log: the number of its entries, or all of them, newest first. Laid out by anchors, which take
// effect at once: the entries keep their place on the page only if its height changes with theirs.
Item {
    id: group

    required property ConnectorViewModel viewModel
    required property ScrollArea page
    readonly property bool listed: viewModel.logsExpanded && viewModel.logs.count > 0

    implicitHeight: summary.y + (listed ? entries.height : summary.height)

    ActionButton {
        id: toggle

        readonly property bool expanded: group.viewModel.logsExpanded

        anchors.right: parent.right
        buttonId: "toggle-logs"
        title: expanded ? "Hide technical log" : "Open technical log"
        viewModel: group.viewModel

        onAction: group.viewModel.logsExpanded = !expanded
    }

    Label {
        id: summary

        anchors.top: toggle.bottom
        anchors.topMargin: Style.blockSpacing
        text: group.viewModel.logs.count === 0
            ? "No commands run yet" : group.viewModel.logs.count + " command log entries available"
        visible: !group.listed
        width: parent.width
    }

    LogColumn {
        id: entries

        anchors.top: summary.top
        delegate: LogEntry {}
        model: group.listed ? group.viewModel.logs : null
        spacing: Style.blockSpacing
        typicalHeight: Style.typicalEntryHeight
        viewport: group.page
        width: parent.width
    }
}
