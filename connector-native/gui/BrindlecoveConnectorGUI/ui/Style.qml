pragma Singleton

import QtQuick
import BrindlecoveConnectorGUI

// Every colour, measure and type size of the window, named once. Lengths are in logical pixels.
QtObject {
    readonly property real bodySize: SystemFonts.size
    readonly property real captionSize: SystemFonts.captionSize
    readonly property real thirdTitleSize: SystemFonts.thirdTitleSize
    readonly property real largeTitleSize: SystemFonts.largeTitleSize
    readonly property string fixedFontFamily: SystemFonts.fixedFamily

    // High contrast changes outlines, placeholders and the width of the focus ring. The rest of the look is
    // given.
    readonly property bool strong: UserPreferences.highContrast
    readonly property color strongOutline: secondary

    // Page
    readonly property int minimumWidth: 1120
    readonly property int minimumHeight: 760
    readonly property int titleBarHeight: 40
    readonly property real pagePadding: 28
    readonly property real sectionSpacing: 20
    readonly property real titleSpacing: 6
    readonly property color pageTop: Qt.rgba(0.94, 0.96, 0.99, 1)
    readonly property color pageBottom: Qt.rgba(0.92, 0.94, 0.98, 1)
    readonly property real rowSpacing: 8
    readonly property real columnSpacing: 12
    readonly property real blockSpacing: 8
    readonly property real groupSpacing: 14

    // Text
    readonly property color title: Qt.rgba(0.08, 0.10, 0.14, 1)
    readonly property color secondary: Qt.rgba(0.29, 0.33, 0.41, 1)
    readonly property color headline: Qt.rgba(0.12, 0.14, 0.18, 1)
    readonly property color output: Qt.rgba(0.16, 0.18, 0.23, 1)
    readonly property color status: Qt.rgba(0.39, 0.43, 0.51, 1)
    readonly property color placeholder: strong ? secondary : Qt.rgba(0.42, 0.45, 0.53, 1)

    // Named colours of the platform. Each has enough contrast with its background.
    readonly property color accent: Qt.rgba(0.04, 0.38, 0.86, 1)
    readonly property color accentHovered: Qt.darker(accent, 1.1)
    readonly property color accentPressed: Qt.darker(accent, 1.3)
    readonly property color accentText: "white"
    readonly property color greenOnDark: Qt.rgba(0.20, 0.82, 0.35, 1)
    readonly property color orangeOnDark: Qt.rgba(1.00, 0.62, 0.04, 1)
    readonly property color greenOnLight: Qt.rgba(0.09, 0.48, 0.20, 1)

    // Status tile
    readonly property real tilePadding: 18
    readonly property real tileRadius: 18
    readonly property color tileTopLeft: Qt.rgba(0.17, 0.19, 0.24, 1)
    readonly property color tileBottomRight: Qt.rgba(0.12, 0.13, 0.17, 1)
    readonly property color tileCaption: Qt.rgba(1, 1, 1, 0.72)
    readonly property color tileBorder: strong ? tileCaption : Qt.rgba(1, 1, 1, 0.08)
    readonly property color tileShadow: Qt.rgba(0, 0, 0, 0.12)
    readonly property real tileShadowBlur: 10
    readonly property real tileShadowOffset: 4

    // Card
    readonly property real cardPadding: 20
    readonly property real cardRadius: 20
    readonly property real cardSpacing: 16
    readonly property real headingSpacing: 4
    // Estimates for the cards below the first two, before they exist: where on the page they begin at the
    // earliest, and their height.
    readonly property real typicalLowerCardsTop: Math.round(bodySize * 27) + 445
    readonly property real typicalLowerCardsHeight: Math.round(bodySize * 10.1) + 205
    readonly property color card: "white"
    readonly property color cardBorder: strong ? strongOutline : Qt.rgba(0.84, 0.87, 0.92, 1)
    readonly property color cardTitle: Qt.rgba(0.10, 0.12, 0.16, 1)
    readonly property color cardSubtitle: Qt.rgba(0.38, 0.42, 0.50, 1)
    readonly property color cardShadow: Qt.rgba(0, 0, 0, 0.06)
    readonly property real cardShadowBlur: 18
    readonly property real cardShadowOffset: 8

    // Buttons and tabs
    readonly property real buttonSidePadding: 16
    readonly property real buttonPadding: 10
    readonly property real buttonRadius: 10
    readonly property color button: "white"
    readonly property color buttonText: Qt.rgba(0.13, 0.15, 0.20, 1)
    readonly property color buttonBorder: strong ? strongOutline : Qt.rgba(0.78, 0.81, 0.86, 1)
    readonly property real pressedScale: 0.97
    readonly property real pressedOpacity: 0.9
    readonly property int pressedHold: 150
    readonly property int pressDuration: 120
    readonly property real tabSidePadding: 14
    readonly property real tabRadius: 12
    readonly property color selectedTabShadow: Qt.alpha(accent, 0.16)
    readonly property real selectedTabShadowBlur: 5
    readonly property real selectedTabShadowOffset: 2
    readonly property color tabShadow: Qt.rgba(0, 0, 0, 0.03)
    readonly property real tabShadowBlur: 2
    readonly property real tabShadowOffset: 1

    // Fields
    readonly property real fieldRadius: 6
    readonly property real fieldSidePadding: 9
    readonly property real textCursorWidth: 1
    // In one row with buttons, a field is as high as they are.
    readonly property real fieldPadding: buttonPadding
    readonly property color field: "white"

    // Context menu
    readonly property real menuWidth: Math.round(bodySize * 12)
    readonly property real menuMargin: 8
    readonly property real menuPadding: 5
    readonly property real menuRadius: 10
    readonly property real menuEntryPadding: 6
    readonly property real menuEntrySidePadding: 10
    readonly property color menuShadow: Qt.rgba(0, 0, 0, 0.18)
    readonly property real menuShadowBlur: 12
    readonly property real menuShadowOffset: 4
    readonly property color disabledText: Qt.rgba(0.60, 0.63, 0.69, 1)

    // Output boxes and the balance panel
    readonly property real panelPadding: 12
    readonly property real panelRadius: 14
    readonly property real panelBodyHeight: 110
    readonly property color panel: Qt.rgba(0.97, 0.98, 1.00, 1)
    readonly property color panelBorder: strong ? strongOutline : Qt.rgba(0.85, 0.88, 0.93, 1)
    readonly property real balancePadding: 16
    readonly property real balanceRadius: 16
    readonly property color balance: Qt.rgba(0.98, 0.99, 1.00, 1)
    // Estimated height of an entry that is not laid out yet.
    readonly property real typicalEntryHeight: Math.round(bodySize * 7) + 2 * panelPadding

    // Focus ring and scroll bar
    readonly property real focusRingWidth: strong ? 4 : 2
    readonly property real focusRingGap: 1
    readonly property real scrollBarWidth: 12
    readonly property real scrollThumbWidth: 6
    readonly property real scrollThumbMinimum: 36
    readonly property real pageOverlap: 20
    readonly property int pagingInterval: 150
    readonly property color scrollThumb: Qt.alpha(cardTitle, 0.5)
    readonly property color scrollThumbHovered: Qt.alpha(cardTitle, 0.65)
    readonly property color scrollThumbPressed: Qt.alpha(cardTitle, 0.8)
}
