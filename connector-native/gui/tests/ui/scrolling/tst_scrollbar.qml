import QtQuick
import QtTest
import BrindlecoveConnectorGUI
import "../find.js" as Find

Item {
    id: root

    height: 400
    width: 400

    ScrollArea {
        id: area

        anchors.fill: parent

        content: Item {
            id: page

            height: 4000
        }
    }

    ScrollBar {
        id: bar

        area: area
    }

    TestCase {
        name: "ScrollBar"
        when: windowShown

        readonly property real middle: bar.width / 2

        function init() {
            page.height = 4000;
            area.contentY = 0;
        }

        // What a translucent colour is on white.
        function shown(color) {
            return Qt.tint("white", color);
        }

        function thumbColor(y) {
            return grabImage(root).pixel(bar.x + middle, y);
        }

        function verifyThumb(y, color) {
            tryVerify(() => Find.isNear(thumbColor(y), shown(color)));
        }

        // The first by its name: after a click, Qt Quick Test's pointer hovers over nothing.
        function test_PointerOverTheTrackIsShown() {
            verifyThumb(10, Style.scrollThumb);
            mouseMove(bar, middle, 300);
            verifyThumb(10, Style.scrollThumbHovered);
            mouseMove(root, 10, 10);
            verifyThumb(10, Style.scrollThumb);
        }

        function test_theThumbShowsThatItIsHeld() {
            mousePress(bar, middle, 10);
            verifyThumb(10, Style.scrollThumbPressed);
            mouseRelease(bar, middle, 10);
            tryVerify(() => !Find.isNear(thumbColor(10), shown(Style.scrollThumbPressed)));
        }

        // The rows of the bar at its middle in which the thumb is seen.
        function thumbRows() {
            const image = grabImage(root);
            const rows = Array.from({ length: 400 }, (_, y) => y);
            return rows.filter(y => !Find.isNear(image.pixel(bar.x + middle, y), Qt.color("white")));
        }

        function test_itStandsAtTheEdgeWhileThereIsSomethingToScroll() {
            compare([bar.x, bar.y, bar.width, bar.height], [400 - 12, 0, 12, 400]);
            verify(bar.visible);
            page.height = 401;
            verify(bar.visible);
            page.height = 400;
            verify(!bar.visible);
        }

        function test_theThumbShowsHowMuchIsSeenAndWhere() {
            page.height = 800;
            compare([thumbRows()[0], thumbRows().length], [0, 200]);
            area.contentY = 200;
            compare([thumbRows()[0], thumbRows().length], [100, 200]);
        }

        function test_theThumbIsRoundAndStandsInTheMiddle() {
            const image = grabImage(root);
            const columns = y => Array.from({ length: 12 }, (_, x) => x)
                .filter(x => !Find.isNear(image.pixel(bar.x + x, y), Qt.color("white")));
            compare(columns(20), [3, 4, 5, 6, 7, 8]);
            verify(columns(0).length < 6, columns(0));
        }

        function test_whereTheThumbBeginsAndEnds_data() {
            return [
                { tag: "before it", y: 99, to: 0 },
                { tag: "its first pixel", y: 100, to: 200 },
                { tag: "its last pixel", y: 299, to: 200 },
                { tag: "behind it", y: 300, to: 400 },
            ];
        }

        function test_whereTheThumbBeginsAndEnds(row) {
            page.height = 800;
            area.contentY = 200;
            mouseClick(bar, middle, row.y);
            compare(area.contentY, row.to);
        }

        function test_theThumbOfALongPageCanStillBeGrabbed() {
            page.height = 1000000;
            compare([thumbRows()[0], thumbRows().length], [0, 36]);
            area.contentY = area.maximumY;
            compare([thumbRows()[0], thumbRows().length], [400 - 36, 36]);
        }

        function test_aDragTakesThePageAlong() {
            mousePress(bar, middle, 10);
            mouseMove(bar, middle, 110);
            fuzzyCompare(area.contentY, 100 / (400 - 40) * 3600, 1);
            mouseMove(bar, middle, 10);
            compare(area.contentY, 0);
            mouseRelease(bar, middle, 10);
        }

        function test_aDragGoesOnFromWhereTheThumbIs() {
            area.contentY = 1800;
            mousePress(bar, middle, 190);
            mouseMove(bar, middle, 226);
            fuzzyCompare(area.contentY, 1800 + 36 / (400 - 40) * 3600, 1);
            mouseRelease(bar, middle, 226);
        }

        function test_aClickBesideTheThumbTurnsAPage() {
            mouseClick(bar, middle, 350);
            compare(area.contentY, 380);
            mouseClick(bar, middle, 350);
            compare(area.contentY, 760);
            mouseClick(bar, middle, 5);
            compare(area.contentY, 380);
            mouseClick(bar, middle, 5);
            compare(area.contentY, 0);
            // One page for one click.
            mouseClick(bar, middle, 350);
            wait(2 * Style.pagingInterval + 50);
            compare(area.contentY, 380);
        }

        function test_aHeldButtonRepeatsInTheIntervalOfTheStyle() {
            const timer = Array.from(bar.data).find(child => child.turnPage !== undefined);
            compare(timer.interval, Style.pagingInterval);
        }

        function test_aHeldButtonTurnsPagesUntilTheThumbIsThere() {
            mousePress(bar, middle, 200);
            tryVerify(() => area.contentY > 1200);
            // The thumb lies under the pointer: nothing moves on, and nothing back.
            wait(2 * Style.pagingInterval + 50);
            const reached = area.contentY;
            compare(reached % 380, 0);
            verify(reached <= 2000, "at " + reached);
            mouseRelease(bar, middle, 200);
            compare(area.contentY, reached);
        }
    }
}
