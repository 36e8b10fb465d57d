import QtQuick
import QtTest
import Testing
import BrindlecoveConnectorGUI

Item {
    id: root

    property var actions: []
    property real depthWhenBlocking: -1
    // How long an action takes that blocks.
    property int blocked: 0

    height: 300
    width: 600

    function act(name, pressedId) {
        root.actions.push([name, pressedId]);
        const end = Date.now() + root.blocked;
        while (Date.now() < end) {
        }
    }

    ConnectorViewModel {
        id: viewModel

        onAboutToBlock: root.depthWhenBlocking = c.depth
    }

    ActionButton {
        id: a

        buttonId: "a"
        title: "First"
        viewModel: viewModel

        onAction: root.act("a", viewModel.pressedButtonId)
    }

    ActionButton {
        id: b

        buttonId: "b"
        prominent: true
        title: "Second"
        viewModel: viewModel
        y: 100

        onAction: root.act("b", viewModel.pressedButtonId)
    }

    ActionButton {
        id: c

        buttonId: "c"
        title: "Third"
        viewModel: viewModel
        y: 200

        onAction: viewModel.checkServer()
    }

    Component {
        id: largerButtons

        PlainButton {
            height: 80
            title: "Larger"
            width: 300
        }
    }

    SignalSpy {
        id: presses

        signalName: "pressedButtonIdChanged"
        target: viewModel
    }

    TestCase {
        name: "ActionButton"
        when: windowShown

        function init() {
            root.actions = [];
            root.blocked = 0;
            tryVerify(() => viewModel.pressedButtonId === "" && [a, b, c].every(button => button.scale === 1));
            presses.clear();
        }

        function verifyPressedLook(button) {
            verify(button.pressed);
            fuzzyCompare(button.scale, 0.97, 1e-9);
            fuzzyCompare(button.opacity, 0.9, 1e-9);
        }

        function test_nothingLooksPressedAtFirst() {
            for (const button of [a, b]) {
                verify(!button.pressed);
                compare(button.scale, 1);
                compare(button.opacity, 1);
            }
        }

        function test_theActionRunsWithTheButtonPressed() {
            mouseClick(a);
            compare(root.actions, [["a", "a"]]);
            verify(a.pressed);
            verify(!b.pressed);
            compare(b.scale, 1);
        }

        function test_thePressedLookIsWholeBeforeACommandBlocks() {
            // What an animation would still bring is never seen.
            root.depthWhenBlocking = -1;
            mouseClick(c);
            compare(root.depthWhenBlocking, 1);
            verifyPressedLook(c);
        }

        function test_aPressThatBlocksNothingEasesIn() {
            const began = Date.now();
            mouseClick(a);
            verify(a.scale > 0.97);
            let between = 0;
            while (a.scale > 0.97 + 1e-9) {
                wait(1);
                between += a.scale < 1 && a.scale > 0.97 + 1e-9 ? 1 : 0;
                verify(Date.now() - began < 1000);
            }
            verify(between > 0);
            verifyPressedLook(a);
        }

        function test_theReleaseEasesOutIn120Milliseconds() {
            viewModel.pressedButtonId = "b";
            tryCompare(b, "depth", 1);
            const began = Date.now();
            viewModel.pressedButtonId = "";
            verify(b.scale < 1);
            verify(b.opacity < 1);
            let last = b.scale;
            let midway = 0;
            while (b.scale < 1) {
                wait(1);
                verify(b.scale >= last);
                last = b.scale;
                // Ease-out: past half its way before half its time.
                if (Date.now() - began < 55 && Date.now() - began > 45)
                    midway = b.scale;
                verify(Date.now() - began < 1000);
            }
            verify(Date.now() - began >= 100, "took " + (Date.now() - began));
            if (midway > 0)
                verify(midway > 0.983, "was " + midway);
            compare(b.opacity, 1);
        }

        function test_itIsReleased150MillisecondsAfterTheAction_data() {
            return [{ tag: "a quick action", blocked: 0 }, { tag: "a slow action", blocked: 400 }];
        }

        function test_itIsReleased150MillisecondsAfterTheAction(row) {
            root.blocked = row.blocked;
            mouseClick(a);
            const returned = Date.now();
            compare(viewModel.pressedButtonId, "a");
            tryCompare(viewModel, "pressedButtonId", "");
            const held = Date.now() - returned;
            verify(held >= 135 && held < 400, "held " + held);
        }

        function test_anEarlierButtonsTimerLeavesALaterPressAlone() {
            mouseClick(a);
            wait(75);
            mouseClick(b);
            const second = Date.now();
            compare(viewModel.pressedButtonId, "b");
            // The first one's time is over well before the second one's.
            while (Date.now() - second < 115) {
                wait(5);
                if (Date.now() - second < 115)
                    compare(viewModel.pressedButtonId, "b");
            }
            tryCompare(viewModel, "pressedButtonId", "");
            verify(Date.now() - second >= 135);
        }

        function test_eachPressOfOneButtonIsReleasedInItsTime() {
            mouseClick(a);
            const first = Date.now();
            wait(90);
            mouseClick(a);
            const second = Date.now();
            compare(viewModel.pressedButtonId, "a");
            // The first press's job does not know of the second one.
            tryCompare(viewModel, "pressedButtonId", "");
            verify(Date.now() - first >= 135);
            verify(Date.now() - second < 135, "held " + (Date.now() - second));
        }

        function test_oneIdIsPressedAtMost() {
            mouseClick(a);
            mouseClick(b);
            verify(!a.pressed);
            verify(b.pressed);
        }

        function test_idsAreComparedExactly() {
            viewModel.pressedButtonId = "A";
            verify(!a.pressed);
            viewModel.pressedButtonId = "a ";
            verify(!a.pressed);
            viewModel.pressedButtonId = "";
        }

        function test_keysPressItToo() {
            a.forceActiveFocus();
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            compare(root.actions.length, 2);
        }

        function test_aPressIsPublishedTwice() {
            mouseClick(a);
            tryCompare(presses, "count", 2);
            compare(viewModel.pressedButtonId, "");
        }

        function test_theFaceLooksAsItShould() {
            compare(a.face.color, Qt.rgba(1, 1, 1, 1));
            compare(a.face.borderColor, Qt.rgba(0.78, 0.81, 0.86, 1));
            compare(a.face.radius, 10);
            compare(b.face.color, Style.accent);
            compare(b.face.borderColor.a, 0);
        }

        function test_theLabelIsPadded() {
            const label = Array.from(a.children).find(item => item.text === "First");
            compare(String(label.color), String(Qt.rgba(0.13, 0.15, 0.20, 1)));
            compare(a.width, Math.ceil(label.implicitWidth) + 32);
            compare(a.height, Math.ceil(label.implicitHeight) + 20);
            compare(Qt.point(label.x, label.y), Qt.point(16, 10));
        }

        function test_theLabelStandsInTheMiddleOfALargerButton() {
            const larger = createTemporaryObject(largerButtons, root);
            const label = Array.from(larger.children).find(item => item.text === "Larger");
            fuzzyCompare(label.x + label.width / 2, 150, 1);
            fuzzyCompare(label.y + label.height / 2, 40, 1);
        }

        function test_theTitleIsShownAsItIs() {
            a.title = "<i>x</i> & y";
            const label = Array.from(a.children).find(item => item.text === "<i>x</i> & y");
            compare(label.textFormat, Text.PlainText);
            a.title = "First";
        }
    }
}
