import QtQuick
import QtTest
import BrindlecoveConnectorGUI

Item {
    id: root

    property FillingRow row

    height: 300
    width: 600

    Component {
        id: rows

        FillingRow {
            property alias first: first
            property alias second: second
            property alias third: third
            readonly property real half: width / 2

            anchors.right: parent.right
            filling: second
            spacing: 10
            width: 300

            Item {
                id: first

                height: 20
                width: 50
            }

            Item {
                id: second

                height: 31
            }

            Item {
                id: third

                height: 40
                width: 60
            }
        }
    }

    Component {
        id: emptyRows

        FillingRow {
        }
    }

    Component {
        id: parts

        Item {
            height: 10
            width: 25
        }
    }

    TestCase {
        name: "FillingRow"
        when: windowShown

        function init() {
            root.row = createTemporaryObject(rows, root);
        }

        function cleanup() {
            root.row = null;
        }

        function places() {
            return Array.from(root.row.children).map(item => [item.x, item.y, item.width]);
        }

        // Without a frame in between.
        function test_oneTakesTheWidthThatTheOthersLeave() {
            compare(places(), [[0, 10, 50], [60, 5, 170], [240, 0, 60]]);
            compare(root.row.height, 40);
            compare(root.row.x, 300);
        }

        function test_itFollowsWhatChanges_data() {
            return [
                { tag: "its width", change: row => row.width = 400, places: [[0, 10, 50], [60, 5, 270], [340, 0, 60]] },
                { tag: "its spacing", change: row => row.spacing = 20, places: [[0, 10, 50], [70, 5, 150], [240, 0, 60]] },
                { tag: "who fills", change: row => row.filling = row.first, places: [[0, 10, 50], [60, 5, 170], [240, 0, 60]] },
                { tag: "a part's width", change: row => row.third.width = 80, places: [[0, 10, 50], [60, 5, 150], [220, 0, 80]] },
                { tag: "a part's height", change: row => row.first.height = 60, places: [[0, 0, 50], [60, 15, 170], [240, 10, 60]] },
                { tag: "too little room", change: row => row.width = 50, places: [[0, 10, 50], [60, 5, 0], [70, 0, 60]] },
            ];
        }

        function test_itFollowsWhatChanges(row) {
            row.change(root.row);
            tryVerify(() => JSON.stringify(places()) === JSON.stringify(row.places));
            compare(root.row.half, root.row.width / 2);
            tryCompare(root.row, "height", Math.max(...Array.from(root.row.children).map(item => item.height)));
        }

        function test_partsComeAndGo() {
            const added = createTemporaryObject(parts, root.row);
            tryCompare(added, "x", 275);
            compare(root.row.second.width, 135);
            added.width = 35;
            tryCompare(added, "x", 265);
            added.parent = root;
            tryCompare(root.row.second, "width", 170);
            added.width = 45;
            verify(!isPolishScheduled(root.row));
        }

        function test_withoutSpacingThePartsTouch() {
            const row = createTemporaryObject(emptyRows, root);
            compare(row.height, 0);
            createTemporaryObject(parts, row);
            const second = createTemporaryObject(parts, row);
            tryCompare(second, "x", 25);
            compare(row.height, 10);
        }
    }
}
