import QtQuick
import QtTest
import Testing
import BrindlecoveConnectorGUI
import "../find.js" as Find

Item {
    height: 300
    width: 700

    DualPanel {
        id: panels

        leftBody: ""
        leftTitle: "Left"
        rightBody: ""
        rightTitle: "Right"
        width: 612
    }

    FontMetrics {
        id: metrics
    }

    TestCase {
        name: "DualPanel"
        when: windowShown

        function bodies() {
            return Find.outputs(panels);
        }

        function area(index) {
            return Find.all(panels, item => item.maximumY !== undefined && item.contentY !== undefined)[index];
        }

        function cleanup() {
            panels.leftBody = "";
            panels.rightBody = "";
        }

        function test_onlyAnEmptyBodyHasNoData_data() {
            return [
                { tag: "empty", body: "", shown: "No data" },
                { tag: "a blank", body: " ", shown: " " },
                { tag: "blanks", body: "   ", shown: "   " },
                { tag: "a line break", body: "\n", shown: "\n" },
                { tag: "a tab", body: "\t", shown: "\t" },
                { tag: "text", body: "x\n\n", shown: "x\n\n" },
                { tag: "markup", body: "<b>x</b>", shown: "<b>x</b>" },
            ];
        }

        function test_onlyAnEmptyBodyHasNoData(row) {
            panels.leftBody = row.body;
            panels.rightBody = row.body;
            compare(bodies().length, 2);
            for (const body of bodies()) {
                compare(body.source, row.shown);
            }
        }

        function test_eachBodyStandsUnderItsTitle() {
            panels.leftBody = "l";
            panels.rightBody = "r";
            const left = Find.text(panels, "Left").mapToItem(panels, 0, 0);
            const right = Find.text(panels, "Right").mapToItem(panels, 0, 0);
            compare(left, Qt.point(0, 0));
            compare(right, Qt.point(312, 0));
            compare(bodies().map(body => body.source), ["l", "r"]);
            compare(bodies()[0].mapToItem(panels, 0, 0).x, 12);
            compare(bodies()[1].mapToItem(panels, 0, 0).x, 312 + 12);
        }

        function test_bodiesHaveAFixedPitch() {
            for (const body of bodies()) {
                metrics.font = body.font;
                compare(metrics.advanceWidth("i"), metrics.advanceWidth("M"));
                compare(body.font.pixelSize, SystemFonts.size);
            }
        }

        function test_longTextScrollsAndGrowsNothing() {
            const height = panels.height;
            panels.leftBody = "line\n".repeat(200);
            compare(panels.height, height);
            compare(area(0).height, 110);
            verify(area(0).maximumY > 1000);
            compare(area(1).maximumY, 0);
            const point = area(0).mapToItem(panels, 50, 50);
            mouseWheel(panels, point.x, point.y, 0, -120);
            verify(area(0).contentY > 0);
        }

        function test_theScrollBarStandsAtTheEdgeOfItsBox() {
            panels.leftBody = "line\n".repeat(200);
            const box = Find.first(panels, item => item.shadowBlur !== undefined);
            const bar = Find.first(box, item => item.track !== undefined);
            verify(bar.visible);
            compare(bar.mapToItem(box, 0, 0), Qt.point(box.width - bar.width, 12));
            compare(bar.height, 110);
        }

        function test_bodiesAreSelectedAndCopiedExactly() {
            panels.leftBody = "one\u00a0two\r\nthree";
            const body = bodies()[0];
            body.forceActiveFocus();
            body.selectAll();
            keySequence(StandardKey.Copy);
            compare(Surroundings.clipboard(), "one\u00a0two\r\nthree");
            Surroundings.setClipboard("");
        }

        function entry(title) {
            return Find.first(panels.Window.contentItem, item => item.text === title && item.triggered !== undefined);
        }

        function test_theContextMenuSelectsAndCopies() {
            panels.leftBody = "one\r\ntwo";
            const body = bodies()[0];
            mouseClick(body, 5, 5, Qt.RightButton);
            tryVerify(() => entry("Select all") !== null && entry("Select all").width > 0);
            compare(entry("Copy").enabled, false);
            mouseClick(entry("Select all"));
            compare(body.selectedText, "one\r\ntwo");
            tryVerify(() => entry("Select all") === null);
            keyClick(Qt.Key_Menu);
            tryVerify(() => entry("Copy") !== null && entry("Copy").width > 0);
            compare(body.selectedText, "one\r\ntwo");
            mouseClick(entry("Copy"));
            compare(Surroundings.clipboard(), "one\r\ntwo");
            tryVerify(() => entry("Copy") === null);
            Surroundings.setClipboard("");
        }

        function test_bodiesCannotBeEdited() {
            panels.leftBody = "fixed";
            bodies()[0].forceActiveFocus();
            keyClick("x");
            keySequence(StandardKey.Delete);
            compare(bodies()[0].source, "fixed");
        }

        function test_theBoxLooksAsItShould() {
            const box = Find.first(panels, item => item.shadowBlur !== undefined);
            compare(String(box.color), String(Qt.rgba(0.97, 0.98, 1.00, 1)));
            compare(box.borderColor, Qt.rgba(0.85, 0.88, 0.93, 1));
            compare(box.radius, 14);
            compare(box.height, 110 + 24);
            compare(String(bodies()[0].color), String(Qt.rgba(0.16, 0.18, 0.23, 1)));
            compare(String(Find.text(panels, "Left").color), String(Qt.rgba(0.12, 0.14, 0.18, 1)));
            verify(Find.text(panels, "Left").font.bold);
            const body = bodies()[0];
            compare(String(body.background), String(Qt.rgba(0.97, 0.98, 1.00, 1)));
            compare(String(body.selectionColor), String(Qt.rgba(0.04, 0.38, 0.86, 1)));
            compare(String(body.selectedTextColor), "#ffffff");
        }

        function test_theTitleStandsAboveItsBoxAndKeepsToItsWidth() {
            const title = Find.text(panels, "Left");
            const box = Find.first(panels, item => item.shadowBlur !== undefined);
            compare(box.mapToItem(panels, 0, 0).y, title.height + 8);
            compare(title.width, box.width);
            compare(box.width, 300);
        }

        function test_theFocusRingFollowsTheBox() {
            bodies()[1].forceActiveFocus();
            bodies()[0].forceActiveFocus(Qt.TabFocusReason);
            const [box, ring] = Find.all(panels, item => item.shadowBlur !== undefined);
            compare(ring.parent, box);
            compare(ring.radius, box.radius + 3);
        }
    }
}
