pragma ComponentBehavior: Bound

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

    implicitHeight: lowerCards.y + lowerCards.height

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

    Item {
        id: lowerCards

        anchors.top: apiCard.bottom
        anchors.topMargin: Style.sectionSpacing
        height: childrenRect.height === 0 ? Style.typicalLowerCardsHeight : childrenRect.height
        width: cards.width

        // Qt 6.4: a Loader cannot create a bound component.
        Repeater {
            model: cards.complete ? 1 : 0

            delegate: Item {
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
        }
    }
}
