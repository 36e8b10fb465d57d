import QtQuick
import BrindlecoveConnectorGUI

// The cards that lie below the view of a small window.
Item {
    id: cards

    required property ConnectorViewModel viewModel
    required property ScrollArea page

    implicitHeight: logCard.y + logCard.height

    SurfaceCard {
        id: updateCard

        subtitle: "Check for a new version, download it, then install it when you are ready."
        title: "Updates"
        // Nothing in it stretches, so the card has its implicit width.
        width: Math.min(naturalWidth, cards.width)

        UpdateGroup {
            viewModel: cards.viewModel
        }
    }

    SurfaceCard {
        id: logCard

        anchors.top: updateCard.bottom
        anchors.topMargin: Style.sectionSpacing
        subtitle: "All raw command output lives here and stays hidden by default."
        title: "Technical log"
        width: cards.width

        LogsGroup {
            page: cards.page
            viewModel: cards.viewModel
            width: parent.width
        }
    }
}
