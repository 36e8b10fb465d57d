import QtQuick
import QtTest
import BrindlecoveConnectorGUI
import "../find.js" as Find

Item {
    id: root

    height: 200
    width: 1000

    ConnectorViewModel {
        id: viewModel
    }

    Header {
        id: header

        viewModel: viewModel
        width: 1000
    }

    TestCase {
        name: "Header"
        when: windowShown

        readonly property PlainButton refresh: Find.button(header, "Refresh all")

        function isFilledWith(color) {
            // Left of the title.
            const at = refresh.mapToItem(root, 6, refresh.height / 2);
            return Find.isNear(grabImage(root).pixel(at.x, at.y), color);
        }

        function centerOf(item) {
            return item.mapToItem(header, 0, item.height / 2).y;
        }

        function test_theTitleAndTheButtonStandInTheMiddle() {
            const texts = Find.text(header, "Brindlecove Connector").parent;
            compare(header.height, texts.height);
            header.height = 150;
            for (const item of [texts, refresh])
                fuzzyCompare(centerOf(item), 75, 0.5);
            header.height = undefined;
            compare(header.height, texts.height);
        }

        function test_theTitleEndsBeforeTheButton() {
            for (const line of Find.texts(header).filter(line => line !== "Refresh all")) {
                const label = Find.text(header, line);
                compare(label.mapToItem(header, 0, 0).x, 0);
                compare(label.width, refresh.x - 8);
            }
            compare(refresh.x + refresh.width, 1000);
        }

        // The first by its name: after a click, Qt Quick Test's pointer hovers over nothing.
        function test_PointerOverTheStandardButtonIsShown() {
            verify(isFilledWith(Style.accent));
            mouseMove(refresh, 20, 20);
            tryVerify(() => isFilledWith(Style.accentHovered));
            mouseMove(root, 10, 190);
            tryVerify(() => isFilledWith(Style.accent));
        }

        function test_theStandardButtonLooksPressedFromMouseDown() {
            mousePress(refresh, 20, 20);
            tryVerify(() => isFilledWith(Style.accentPressed));
            mouseMove(root, 10, 190);
            tryVerify(() => !isFilledWith(Style.accentPressed));
            mouseMove(refresh, 20, 20);
            tryVerify(() => isFilledWith(Style.accentPressed));
            keyClick(Qt.Key_Escape);
            tryVerify(() => !isFilledWith(Style.accentPressed));
            mouseRelease(refresh, 20, 20);
            compare(viewModel.logs.count, 0);
        }

        function test_theStandardButtonLooksPressedWhileSpaceIsHeld() {
            refresh.forceActiveFocus();
            keyPress(Qt.Key_Space);
            tryVerify(() => isFilledWith(Style.accentPressed));
            keyRelease(Qt.Key_Space);
            tryVerify(() => !isFilledWith(Style.accentPressed));
            compare(viewModel.logs.count, 4);
        }
    }
}
