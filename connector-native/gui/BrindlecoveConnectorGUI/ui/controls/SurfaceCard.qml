import QtQuick
import BrindlecoveConnectorGUI

// The white titled card that frames a group.
Box {
    id: card

    required property string title
    property string subtitle: ""
    default property Item content
    // The implicit width of its widest part.
    readonly property real naturalWidth: 2 * Style.cardPadding
        + Math.ceil(Math.max(heading.implicitWidth, subheading.implicitWidth, content.implicitWidth))

    borderColor: Style.cardBorder
    color: Style.card
    implicitHeight: body.y + body.height + Style.cardPadding
    radius: Style.cardRadius
    shadowBlur: Style.cardShadowBlur
    shadowColor: Style.cardShadow
    shadowOffset: Style.cardShadowOffset

    Label {
        id: heading

        color: Style.cardTitle
        font.pixelSize: Style.thirdTitleSize
        font.weight: Font.DemiBold
        text: card.title
        width: body.width
        x: Style.cardPadding
        y: Style.cardPadding
    }

    Label {
        id: subheading

        anchors.left: heading.left
        anchors.top: heading.bottom
        anchors.topMargin: Style.headingSpacing
        color: Style.cardSubtitle
        text: card.subtitle
        visible: text !== ""
        width: body.width
    }

    Item {
        id: body

        anchors.left: heading.left
        anchors.top: subheading.visible ? subheading.bottom : heading.bottom
        anchors.topMargin: Style.cardSpacing
        children: [card.content]
        height: card.content.implicitHeight
        width: card.width - 2 * Style.cardPadding
    }
}
