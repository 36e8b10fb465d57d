import QtQuick
import QtTest
import Testing
import BrindlecoveConnectorGUI
import "../find.js" as Find

Item {
    id: root

    property ConnectorViewModel viewModel
    property LogsGroup group
    property ScrollArea page
    readonly property string none: "No commands run yet"

    height: 500
    width: 800

    Component {
        id: fixtures

        ScrollArea {
            id: page

            property alias viewModel: viewModel
            property alias group: group

            height: 500
            width: 800

            content: Item {
                height: group.height

                LogsGroup {
                    id: group

                    page: page
                    viewModel: viewModel
                    width: parent.width
                }
            }

            ConnectorViewModel {
                id: viewModel
            }
        }
    }

    TestCase {
        name: "LogsGroup"
        when: windowShown

        function init() {
            Surroundings.connector.reset();
            root.page = createTemporaryObject(fixtures, root);
            root.viewModel = root.page.viewModel;
            root.group = root.page.group;
        }

        function cleanup() {
            // What goes with its fixture must not have the focus then.
            root.forceActiveFocus();
        }

        function run(output) {
            Surroundings.connector.answer("update-check", output);
            root.viewModel.checkUpdate();
        }

        function open() {
            root.viewModel.logsExpanded = true;
            waitForRendering(root.group);
        }

        function entries() {
            return Find.all(root.group, item => item.output !== undefined && item.title !== undefined && item.visible);
        }

        function shows(line) {
            return Find.text(root.group, line) !== null;
        }

        function test_fourForms_data() {
            return [
                { tag: "hidden and empty", expanded: false, runs: 0, line: root.none },
                { tag: "open and empty", expanded: true, runs: 0, line: root.none },
                { tag: "hidden with one entry", expanded: false, runs: 1, line: "1 command log entries available" },
                { tag: "hidden with three entries", expanded: false, runs: 3, line: "3 command log entries available" },
                { tag: "open with one entry", expanded: true, runs: 1, line: null },
                { tag: "open with three entries", expanded: true, runs: 3, line: null },
            ];
        }

        function test_fourForms(row) {
            root.viewModel.logsExpanded = row.expanded;
            for (let i = 0; i < row.runs; ++i)
                run("output");
            if (row.line === null) {
                tryVerify(() => entries().length === row.runs);
                verify(!shows(root.none));
                compare(Find.texts(root.group).filter(text => text.includes("available")), []);
            } else {
                verify(shows(row.line));
                compare(entries().length, 0);
            }
        }

        function test_theButtonTogglesTheLog() {
            verify(shows(root.none));
            mouseClick(Find.button(root.group, "Open technical log"));
            compare(root.viewModel.logsExpanded, true);
            verify(shows(root.none));
            mouseClick(Find.button(root.group, "Hide technical log"));
            compare(root.viewModel.logsExpanded, false);
            verify(shows(root.none));
            compare(Find.button(root.group, "Open technical log").buttonId, "toggle-logs");
            verify(!Find.button(root.group, "Open technical log").prominent);
        }

        function test_theButtonStandsAtTheTrailingEdge() {
            const button = Find.button(root.group, "Open technical log");
            compare(button.x + button.width, 800);
            const summary = Find.text(root.group, root.none);
            compare(summary.y, button.y + button.height + 8);
            compare(summary.width, 800);
        }

        function test_theCountGrowsWithEachRun() {
            for (let i = 1; i <= 12; ++i) {
                run("");
                verify(shows(i + " command log entries available"));
            }
        }

        function test_theNewestEntryIsFirst() {
            run("older");
            run("newer");
            open();
            tryVerify(() => entries().length === 2);
            compare(entries().map(entry => entry.output), ["newer", "older"]);
            verify(entries()[0].y < entries()[1].y);
            compare(entries()[1].y, entries()[0].y + entries()[0].height + 8);
        }

        function test_aRunAddsToTheOpenLogAtTheTop() {
            run("older");
            open();
            tryVerify(() => entries().length === 1);
            run("newer");
            tryVerify(() => entries().length === 2);
            compare(entries()[0].output, "newer");
            compare(root.viewModel.logsExpanded, true);
        }

        function test_anEmptyLogThatIsOpenFillsWithTheFirstRun() {
            open();
            verify(shows(root.none));
            run("first");
            tryVerify(() => entries().length === 1);
            verify(!shows(root.none));
        }

        function test_anEmptyOutputIsABoxOfPaddingOnly() {
            run("");
            open();
            tryVerify(() => entries().length === 1);
            compare(Find.texts(entries()[0]), ["update-check"]);
            const box = Find.first(entries()[0], item => item.shadowBlur !== undefined);
            compare(box.height, 24);
            compare(box.width, 800);
        }

        function test_outputIsShownWholeAndAsItIs_data() {
            return [
                { tag: "markup", output: "<b>bold</b> & <img src='x'>" },
                { tag: "blanks and line ends", output: "  a\t b\n\n\nc  \n" },
                { tag: "CR LF", output: "a\r\nb\r\n" },
                { tag: "no-break blank", output: "a\u00a0b" },
                { tag: "long", output: "line of output\n".repeat(2000) },
            ];
        }

        function test_outputIsShownWholeAndAsItIs(row) {
            run(row.output);
            open();
            tryVerify(() => entries().length === 1);
            const output = Find.outputs(entries()[0])[0];
            output.forceActiveFocus();
            output.selectAll();
            keySequence(StandardKey.Copy);
            compare(Surroundings.clipboard(), row.output);
            const box = Find.first(entries()[0], item => item.shadowBlur !== undefined);
            compare(box.height, output.implicitHeight + 24);
        }

        function test_aSelectedPartIsCopiedExactly() {
            run("one\r\ntwo\u00a0three");
            open();
            tryVerify(() => entries().length === 1);
            const output = Find.outputs(entries()[0])[0];
            output.forceActiveFocus();
            output.select(2, 9);
            keySequence(StandardKey.Copy);
            compare(Surroundings.clipboard(), "e\r\ntwo\u00a0");
        }

        function test_outputIsSelectedWithTheMouse() {
            run("abcdefghij");
            open();
            tryVerify(() => entries().length === 1);
            const output = Find.outputs(entries()[0])[0];
            mouseDoubleClickSequence(output, 20, output.height / 2);
            compare(output.selectedText, "abcdefghij");
        }

        function test_theTitleCannotBeSelected() {
            run("output");
            open();
            tryVerify(() => entries().length === 1);
            const title = Find.text(entries()[0], "update-check");
            compare(title.selectedText, undefined);
            verify(title.font.bold);
            compare(title.width, 800);
            compare(String(title.color), String(Qt.rgba(0.12, 0.14, 0.18, 1)));
        }

        function test_theBoxLooksAsItShould() {
            run("output");
            open();
            tryVerify(() => entries().length === 1);
            const box = Find.first(entries()[0], item => item.shadowBlur !== undefined);
            const output = Find.outputs(entries()[0])[0];
            compare(box.color, Qt.rgba(0.97, 0.98, 1.00, 1));
            compare(box.borderColor, Qt.rgba(0.85, 0.88, 0.93, 1));
            compare(box.radius, 14);
            compare(output.mapToItem(box, 0, 0), Qt.point(12, 12));
            compare(output.width, 800 - 24);
            compare(String(output.color), String(Qt.rgba(0.16, 0.18, 0.23, 1)));
            const title = Find.text(entries()[0], "update-check");
            compare(box.y, title.height + 8);
        }

        function test_aFocusedOutputHasARingAroundItsBox() {
            run("output");
            open();
            tryVerify(() => entries().length === 1);
            const boxes = () => Find.all(entries()[0], item => item.shadowBlur !== undefined);
            const output = Find.outputs(entries()[0])[0];
            compare(boxes().length, 1);
            output.forceActiveFocus(Qt.TabFocusReason);
            compare(boxes().length, 2);
            const [box, ring] = boxes();
            compare(ring.mapToItem(box, 0, 0), Qt.point(-3, -3));
            compare([ring.width, ring.height], [box.width + 6, box.height + 6]);
            compare(ring.radius, box.radius + 3);
        }

        function test_theGroupIsAsHighAsItsEntries() {
            run("a\nb\nc");
            run("");
            open();
            tryVerify(() => entries().length === 2);
            const last = entries()[1];
            tryVerify(() => root.group.height === last.mapToItem(root.group, 0, 0).y + last.height);
        }

        function test_thePageScrollsThroughALongLog() {
            for (let i = 0; i < 30; ++i)
                run("entry " + i + "\n".repeat(i % 7));
            open();
            tryVerify(() => root.page.maximumY > 0);
            for (let i = 0; i < 3; ++i) {
                root.page.contentY = root.page.maximumY;
                waitForRendering(root.group, 200);
            }
            tryVerify(() => entries().some(entry => entry.output.startsWith("entry 0")));
            verify(entries().length < 30);
        }

        // Else the thumb of the page's scroll bar would shrink while it is dragged.
        function test_entriesThatAreNotThereYetHaveTheirRoom() {
            const count = 60;
            for (let i = 0; i < count; ++i)
                run("output");
            open();
            tryVerify(() => entries().length > 0);
            const missing = count - entries().length;
            verify(missing > count / 2);
            const room = missing * Style.typicalEntryHeight + entries().length * entries()[0].height + count * 8;
            fuzzyCompare(root.group.height, room, room / 20);
        }

        function test_theLogCanBeHiddenWhileAnEntryHasTheFocus() {
            run("older");
            run("newer");
            open();
            tryVerify(() => entries().length === 2);
            Find.outputs(entries()[1])[0].forceActiveFocus();
            root.viewModel.logsExpanded = false;
            tryVerify(() => entries().length === 0);
            run("newest");
            open();
            tryVerify(() => entries().length === 3);
            compare(entries().map(entry => entry.output), ["newest", "newer", "older"]);
        }

        function test_hidingTheLogShrinksTheGroupAgain() {
            run("a\n".repeat(50));
            const hidden = root.group.height;
            open();
            tryVerify(() => root.group.height > hidden + 300);
            root.viewModel.logsExpanded = false;
            tryCompare(root.group, "height", hidden);
            compare(entries().length, 0);
        }
    }
}
