import QtQuick
import BrindlecoveConnectorGUI

// A dark tile with a caption and a coloured status word.
Box {
    id: tile

    required property string title
    required property string word
    required property bool good
    readonly property color wordColor: good ? Style.greenOnDark : Style.orangeOnDark

    borderColor: Style.tileBorder
    color: Style.tileTopLeft
    endColor: Style.tileBottomRight
    implicitHeight: texts.implicitHeight + 2 * Style.tilePadding
    radius: Style.tileRadius
    shadowBlur: Style.tileShadowBlur
    shadowColor: Style.tileShadow
    shadowOffset: Style.tileShadowOffset

    Column {
        id: texts

        anchors.left: parent.left
        anchors.margins: Style.tilePadding
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Style.blockSpacing

        Label {
            color: Style.tileCaption
            font.pixelSize: Style.captionSize
            text: tile.title
        }

        Label {
            color: tile.wordColor
            elide: Text.ElideRight
            font.pixelSize: Style.thirdTitleSize
            font.weight: Font.DemiBold
            text: tile.word
            width: parent.width
            wrapMode: Text.NoWrap
        }
    }
}
