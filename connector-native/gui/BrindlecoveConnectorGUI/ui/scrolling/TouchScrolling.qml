import QtQuick
import BrindlecoveConnectorGUI

// Scrolls an area by a finger, and lets it run on when the finger leaves the screen in motion.
DragHandler {
    required property ScrollArea area

    acceptedDevices: PointerDevice.TouchScreen
    target: null
    xAxis.enabled: area.maximumX > 0

    onActiveChanged: active ? area.beginDrag() : area.endDrag(centroid.velocity.x, centroid.velocity.y)
    onTranslationChanged: if (active)
        area.dragTo(activeTranslation.x, activeTranslation.y)
}
