import QtQuick
import BrindlecoveConnectorGUI

// A button that runs a command. It looks pressed from before the command begins until shortly after it has
// ended; its shadow would lie inside its own shape, under an opaque fill, so it has none.
PlainButton {
    id: button

    required property ConnectorViewModel viewModel
    required property string buttonId
    readonly property bool pressed: viewModel.pressedButtonId === buttonId
    // Here and not in the transition, which is made when it is first needed: the desktop must be asked before.
    readonly property int releaseDuration: UserPreferences.reducedMotion ? 0 : Style.releaseDuration

    signal action

    states: State {
        name: "pressed"
        when: button.pressed

        PropertyChanges {
            button.opacity: Style.pressedOpacity
            button.scale: Style.pressedScale
        }
    }
    // Only the release is animated: a press must be seen in the one frame before its command blocks.
    transitions: Transition {
        from: "pressed"

        NumberAnimation {
            duration: button.releaseDuration
            easing.type: Easing.OutQuad
            properties: "opacity,scale"
        }
    }

    onAboutToTrigger: viewModel.pressedButtonId = buttonId
    onTriggered: {
        action();
        release.restart();
    }

    Timer {
        id: release

        interval: Style.pressedHold

        // A later press of another button is not this one's to clear.
        onTriggered: if (button.pressed)
            button.viewModel.pressedButtonId = ""
    }
}
