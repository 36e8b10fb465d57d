import QtQuick
import BrindlecoveConnectorGUI

// Shows where a scroll area stands, and scrolls it by dragging.
Item {
    id: bar

    required property ScrollArea area
    readonly property real track: height - thumb.height

    anchors.bottom: area.bottom
    anchors.right: area.right
    anchors.top: area.top
    visible: area.maximumY > 0
    width: Style.scrollBarWidth

    Rectangle {
        id: thumb

        anchors.horizontalCenter: parent.horizontalCenter
        color: Style.scrollThumb
        height: Math.min(bar.height, Math.max(Style.scrollThumbMinimum,
            bar.height * bar.area.height / (bar.area.height + bar.area.maximumY)))
        radius: width / 2
        width: Style.scrollThumbWidth
        y: bar.visible ? bar.track * bar.area.contentY / bar.area.maximumY : 0
    }

    MouseArea {
        property real grabbedAt: 0

        anchors.fill: parent

        onPositionChanged: mouse => bar.area.contentY = (mouse.y - grabbedAt) / bar.track * bar.area.maximumY
        onPressed: mouse => {
            const onThumb = mouse.y >= thumb.y && mouse.y < thumb.y + thumb.height;
            grabbedAt = onThumb ? mouse.y - thumb.y : thumb.height / 2;
            positionChanged(mouse);
        }
    }
}
