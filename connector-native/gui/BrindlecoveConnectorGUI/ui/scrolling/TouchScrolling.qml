import QtQuick
import BrindlecoveConnectorGUI

// Scrolls an area by dragging and flicking with a finger.
DragHandler {
    required property ScrollArea area

    acceptedDevices: PointerDevice.TouchScreen
    target: null
    xAxis.enabled: area.maximumX > 0

    onActiveChanged: active ? area.beginDrag() : area.endDrag(centroid.velocity.x, centroid.velocity.y)
    onTranslationChanged: if (active)
        area.dragTo(activeTranslation.x, activeTranslation.y)
}
