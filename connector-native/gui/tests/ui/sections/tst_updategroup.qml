import QtQuick
import QtTest
import Testing
import BrindlecoveConnectorGUI
import "../find.js" as Find

Item {
    id: root

    property ConnectorViewModel viewModel
    property UpdateGroup group
    readonly property string none: "No update action yet"
    readonly property string done: "Update action completed. Technical output is available below."

    height: 300
    width: 800

    Component {
        id: fixtures

        Item {
            property alias viewModel: viewModel
            property alias group: group

            ConnectorViewModel {
                id: viewModel
            }

            UpdateGroup {
                id: group

                viewModel: viewModel
            }
        }
    }

    TestCase {
        name: "UpdateGroup"
        when: windowShown

        function init() {
            Surroundings.connector.reset();
            const fixture = createTemporaryObject(fixtures, root);
            root.viewModel = fixture.viewModel;
            root.group = fixture.group;
        }

        function press(title) {
            mouseClick(Find.button(root.group, title));
        }

        function shows(line) {
            return Find.text(root.group, line) !== null;
        }

        function test_aFreshGroupHasNoActionYet() {
            verify(shows(root.none));
            verify(!shows(root.done));
        }

        function test_anyOutputCompletesTheAction_data() {
            return [
                { tag: "a success", output: "downloaded=true" },
                { tag: "an error", output: "status=error" },
                { tag: "no newer version", output: "up_to_date=true" },
                { tag: "a line break", output: "\n" },
            ];
        }

        function test_anyOutputCompletesTheAction(row) {
            Surroundings.connector.answer("update-check", row.output);
            press("Check for updates");
            verify(shows(root.done));
            verify(!shows(root.none));
        }

        function test_anEmptyOutputSwitchesBack() {
            Surroundings.connector.answer("update-check", "x");
            press("Check for updates");
            verify(shows(root.done));
            press("Download update");
            verify(shows(root.none));
        }

        function test_buttonsRunTheirCommandsInAnyOrder() {
            press("Install update");
            press("Download update");
            press("Check for updates");
            press("Install update");
            compare(Surroundings.connector.calls(),
                ["update-apply", "update-download", "update-check", "update-apply"]);
        }

        function test_theOutputItselfIsNotShown() {
            Surroundings.connector.answer("update-check", "raw output");
            press("Check for updates");
            compare(Find.texts(root.group),
                ["Check for updates", "Download update", "Install update", root.done]);
        }

        function test_buttonsHaveTheirIdsAndLooks() {
            const buttons = Find.buttons(root.group);
            compare(buttons.map(button => button.title), ["Check for updates", "Download update", "Install update"]);
            compare(buttons.map(button => button.buttonId), ["check-update", "download-update", "apply-update"]);
            compare(buttons.map(button => button.prominent), [false, false, true]);
        }

        function test_theRowIsNoWiderThanItsButtons() {
            const [first, second, last] = Find.buttons(root.group);
            compare(first.x, 0);
            compare(second.x, first.width + 8);
            compare(last.x, second.x + second.width + 8);
            compare(first.parent.width, last.x + last.width);
        }

        function test_theLineIsSecondary() {
            compare(Find.text(root.group, root.none).y, Find.buttons(root.group)[0].height + 14);
            compare(String(Find.text(root.group, root.none).color), String(Qt.rgba(0.29, 0.33, 0.41, 1)));
        }
    }
}
