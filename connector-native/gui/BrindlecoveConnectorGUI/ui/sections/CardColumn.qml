import QtQuick
import BrindlecoveConnectorGUI

// The status tiles and the four titled cards, anchored to each other: a positioner would move them one frame
// late.
Item {
    id: cards

    required property ConnectorViewModel viewModel
    required property ScrollArea page
    // Whether the cards below the view of a small window are there too. Until then their room is kept.
    property bool complete: page.height > Style.typicalLowerCardsTop

    implicitHeight: lowerCards.y + (lowerCards.item ? lowerCards.height : Style.typicalLowerCardsHeight)

    StatusRow {
        id: tiles

        viewModel: cards.viewModel
        width: cards.width
    }

    SurfaceCard {
        id: bindCard

        anchors.top: tiles.bottom
        anchors.topMargin: Style.sectionSpacing
        subtitle: "Paste the bind token from the web app, claim it here, then finish the wallet signature in the browser."
        title: "Connector bind"
        width: cards.width

        TokenBindGroup {
            viewModel: cards.viewModel
            width: parent.width
        }
    }

    SurfaceCard {
        id: apiCard

        anchors.top: bindCard.bottom
        anchors.topMargin: Style.sectionSpacing
        subtitle: "Validate credentials against the selected exchange, save them locally, then load balances when needed."
        title: "Exchange API"
        width: cards.width

        ApiGroup {
            viewModel: cards.viewModel
            width: parent.width
        }
    }

    SectionLoader {
        id: lowerCards

        needed: cards.complete
        anchors.top: apiCard.bottom
        anchors.topMargin: Style.sectionSpacing
        width: cards.width

        Component.onCompleted: setSource("LowerCards.qml", { page: cards.page, viewModel: cards.viewModel })
    }
}
