import QtQuick
import BrindlecoveConnectorGUI

// The whole content of the window, and what happens when it appears and goes.
Rectangle {
    id: view

    readonly property string selectedExchangeId: viewModel.selectedExchangeId
    property bool shown: false

    gradient: Gradient {
        GradientStop {
            color: Style.pageTop
            position: 0
        }

        GradientStop {
            color: Style.pageBottom
            position: 1
        }
    }

    onSelectedExchangeIdChanged: {
        // Not the initial value: the appearing window loads that one's credentials itself.
        if (shown) {
            lifecycle.renderNow();
            viewModel.loadSelectedExchangeCredentials();
        }
    }

    ConnectorViewModel {
        id: viewModel
    }

    WindowLifecycle {
        id: lifecycle

        window: view.Window.window

        onAppeared: {
            viewModel.refreshAll();
            viewModel.startStatusPolling();
            viewModel.loadSelectedExchangeCredentials();
            view.shown = true;
        }
        onDisappeared: viewModel.stopStatusPolling()
    }

    ScrollArea {
        id: page

        anchors.fill: parent
        focus: true

        // Sections are anchored to each other: unlike a positioner, that never lags a frame behind.
        content: Item {
            id: sections

            readonly property real sectionWidth: width - 2 * Style.pagePadding

            height: logCard.y + logCard.height + Style.pagePadding

            Header {
                id: header

                viewModel: viewModel
                width: sections.sectionWidth
                x: Style.pagePadding
                y: Style.pagePadding
            }

            StatusCards {
                id: cards

                anchors.left: header.left
                anchors.top: header.bottom
                anchors.topMargin: Style.sectionSpacing
                viewModel: viewModel
                width: sections.sectionWidth
            }

            SurfaceCard {
                id: bindCard

                anchors.left: header.left
                anchors.top: cards.bottom
                anchors.topMargin: Style.sectionSpacing
                subtitle: "Paste the bind token from the web app, claim it here, then finish the wallet signature in the browser."
                title: "Connector bind"
                width: sections.sectionWidth

                TokenBindGroup {
                    viewModel: viewModel
                    width: parent.width
                }
            }

            SurfaceCard {
                id: apiCard

                anchors.left: header.left
                anchors.top: bindCard.bottom
                anchors.topMargin: Style.sectionSpacing
                subtitle: "Validate credentials against the selected exchange, save them locally, then load balances when needed."
                title: "Exchange API"
                width: sections.sectionWidth

                ApiGroup {
                    viewModel: viewModel
                    width: parent.width
                }
            }

            SurfaceCard {
                id: updateCard

                anchors.left: header.left
                anchors.top: apiCard.bottom
                anchors.topMargin: Style.sectionSpacing
                subtitle: "Check for a new version, download it, then install it when you are ready."
                title: "Updates"
                // Nothing in it stretches, so neither does the card.
                width: Math.min(naturalWidth, sections.sectionWidth)

                UpdateGroup {
                    viewModel: viewModel
                }
            }

            SurfaceCard {
                id: logCard

                anchors.left: header.left
                anchors.top: updateCard.bottom
                anchors.topMargin: Style.sectionSpacing
                subtitle: "All raw command output lives here and stays hidden by default."
                title: "Technical log"
                width: sections.sectionWidth

                LogsGroup {
                    page: page
                    viewModel: viewModel
                    width: parent.width
                }
            }
        }
    }

    ScrollBar {
        area: page
    }
}
