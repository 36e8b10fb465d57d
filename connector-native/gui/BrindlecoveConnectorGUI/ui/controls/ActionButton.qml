import QtQuick
import BrindlecoveConnectorGUI

// A button that runs a command. It looks pressed from before the command begins until shortly after it has
// ended; its shadow would lie inside its own shape, under an opaque fill, so it has none.
PlainButton {
    id: button

    required property ConnectorViewModel viewModel
    required property string buttonId
    readonly property bool pressed: viewModel.pressedButtonId === buttonId
    readonly property bool busy: viewModel.busy
    // Progress of the pressed look, from 0 to 1.
    property real depth: 0

    signal action

    opacity: 1 - depth * (1 - Style.pressedOpacity)
    scale: 1 - depth * (1 - Style.pressedScale)

    // Rendered at once: the command blocks the thread before the next frame.
    onBusyChanged: motion.complete()
    onPressedChanged: {
        motion.to = pressed ? 1 : 0;
        motion.restart();
    }
    onTriggered: {
        viewModel.pressedButtonId = buttonId;
        action();
        release.start();
    }

    NumberAnimation {
        id: motion

        duration: UserPreferences.reducedMotion ? 0 : Style.pressDuration
        easing.type: Easing.OutQuad
        property: "depth"
        target: button
    }

    Delay {
        id: release

        interval: Style.pressedHold

        // Meanwhile another button may have been pressed.
        onElapsed: if (button.pressed)
            button.viewModel.pressedButtonId = ""
    }
}
