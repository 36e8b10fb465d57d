import QtQuick
import BrindlecoveConnectorGUI

// The whole content of the window, and the commands that run when it appears and disappears.
Rectangle {
    id: view

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

    ConnectorViewModel {
        id: viewModel

        onAboutToBlock: lifecycle.renderNow()
        onExchangeSelected: loadSelectedExchangeCredentials()
    }

    WaitCursor {
        active: viewModel.busy
    }

    WindowLifecycle {
        id: lifecycle

        window: view.Window.window

        onAppeared: {
            cards.complete = true;
            viewModel.refreshAll();
            viewModel.startStatusPolling();
            viewModel.loadSelectedExchangeCredentials();
        }
        onDisappeared: viewModel.stopStatusPolling()
    }

    ScrollArea {
        id: page

        focus: true
        // Where the window's own screen has no room for its minimum, the page ends with the screen.
        height: view.height === Style.minimumHeight
            ? Math.min(view.height, Screen.height - Style.titleBarHeight,
                Screen.desktopAvailableHeight - Style.titleBarHeight) : view.height
        width: view.width === Style.minimumWidth
            ? Math.min(view.width, Screen.width, Screen.desktopAvailableWidth) : view.width

        content: Item {
            id: sections

            readonly property real sectionWidth: width - 2 * Style.pagePadding

            height: cards.y + cards.height + Style.pagePadding
            implicitWidth: Style.minimumWidth

            Header {
                id: header

                viewModel: viewModel
                width: sections.sectionWidth
                x: Style.pagePadding
                y: Style.pagePadding
            }

            CardColumn {
                id: cards

                anchors.left: header.left
                anchors.top: header.bottom
                anchors.topMargin: Style.sectionSpacing
                page: page
                viewModel: viewModel
                width: sections.sectionWidth
            }
        }

        TouchScrolling {
            area: page
        }
    }

    ScrollBar {
        area: page
    }

    SectionLoader {
        needed: AssistiveTechnology.active

        Component.onCompleted: setSource("sections/SpokenOutcomes.qml", { viewModel: viewModel })
    }
}
