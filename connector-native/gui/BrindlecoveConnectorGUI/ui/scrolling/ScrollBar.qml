import QtQuick
import BrindlecoveConnectorGUI

// The scroll bar of a scroll area: dragging the thumb scrolls, a press beside it scrolls by a page.
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

        readonly property real end: y + height

        anchors.horizontalCenter: parent.horizontalCenter
        color: pointer.dragging ? Style.scrollThumbPressed
            : pointer.containsMouse ? Style.scrollThumbHovered : Style.scrollThumb
        height: Math.min(bar.height, Math.max(Style.scrollThumbMinimum,
            bar.height * bar.area.height / (bar.area.height + bar.area.maximumY)))
        radius: width / 2
        width: Style.scrollThumbWidth
        y: bar.visible ? bar.track * bar.area.contentY / bar.area.maximumY : 0
    }

    MouseArea {
        id: pointer

        property int pressedSide: 0
        property real grabbedAt: 0
        readonly property bool dragging: pressed && pressedSide === 0

        // Whether the pointer is before the thumb (-1), on it (0) or behind it (1).
        function side() {
            return mouseY < thumb.y ? -1 : mouseY >= thumb.end ? 1 : 0;
        }

        anchors.fill: parent
        hoverEnabled: true

        onPositionChanged: mouse => {
            if (dragging)
                bar.area.contentY = (mouse.y - grabbedAt) / bar.track * bar.area.maximumY;
        }
        onPressed: mouse => {
            pressedSide = side();
            grabbedAt = mouse.y - thumb.y;
            paging.turnPage();
        }
    }

    // A held button repeats until the thumb reaches the pointer.
    Timer {
        id: paging

        function turnPage() {
            if (pointer.side() === pointer.pressedSide)
                bar.area.contentY += pointer.pressedSide * (bar.area.height - Style.pageOverlap);
        }

        interval: Style.pagingInterval
        repeat: true
        running: pointer.pressed && !pointer.dragging

        onTriggered: turnPage()
    }
}
