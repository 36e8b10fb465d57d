import QtQuick
import QtTest
import Testing
import BrindlecoveConnectorGUI
import "../find.js" as Find

Item {
    id: root

    property ConnectorViewModel viewModel
    property TokenBindGroup group
    readonly property string hint: "Raw token, server, and binding output is hidden by default."

    height: 600
    width: 1000

    Component {
        id: fixtures

        Item {
            property alias viewModel: viewModel
            property alias group: group

            ConnectorViewModel {
                id: viewModel
            }

            TokenBindGroup {
                id: group

                viewModel: viewModel
                width: 1000
            }
        }
    }

    TestCase {
        name: "TokenBindGroup"
        when: windowShown

        function init() {
            Surroundings.connector.reset();
            const fixture = createTemporaryObject(fixtures, root);
            root.viewModel = fixture.viewModel;
            root.group = fixture.group;
        }

        function answer(command, output) {
            Surroundings.connector.answer(command, output);
        }

        function bodies() {
            root.viewModel.tokenDetailsExpanded = true;
            return Find.outputs(root.group).map(body => body.source);
        }

        function press(title) {
            mouseClick(Find.button(root.group, title));
        }

        function test_theFieldIsAsHighAsTheButtonsBesideIt() {
            const field = Find.first(root, item => item.fieldText !== undefined);
            for (const title of ["Claim token", "Disconnect", "Check server"]) {
                const button = Find.button(root, title);
                compare(button.height, field.height);
                compare(button.mapToItem(root, 0, 0).y, field.mapToItem(root, 0, 0).y);
            }
        }

        function placeOf(item) {
            return item.mapToItem(root.group, 0, 0);
        }

        function test_theFieldFillsTheRowOfTheButtons() {
            const row = [Find.first(root.group, item => item.fieldText !== undefined)];
            row.push(...["Claim token", "Disconnect", "Check server"].map(title => Find.button(root.group, title)));
            compare(placeOf(row[0]).x, 0);
            for (let i = 1; i < row.length; ++i)
                compare(placeOf(row[i]).x, placeOf(row[i - 1]).x + row[i - 1].width + 8);
            compare(placeOf(row[3]).x + row[3].width, 1000);
        }

        function test_theBlocksStandApart() {
            const line = Find.first(root.group, item => Find.isText(item) && item.text.startsWith("Connector: "));
            const steps = [
                [Find.button(root.group, "Claim token"), Find.text(root.group, "Quick state"), 14],
                [Find.text(root.group, "Quick state"), line, 8],
                [line, Find.button(root.group, "Show details"), 14],
                [Find.button(root.group, "Show details"), Find.text(root.group, root.hint), 8],
            ];
            for (const [above, below, distance] of steps)
                compare(placeOf(below).y, placeOf(above).y + above.height + distance);
            for (const text of [Find.text(root.group, "Quick state"), line, Find.text(root.group, root.hint)])
                compare(text.width, 1000);
        }

        function test_headingsLookAsTheyShould() {
            for (const heading of ["Quick state", "Token and bind details"]) {
                const label = Find.text(root.group, heading);
                verify(label.font.bold);
                compare(String(label.color), String(Qt.rgba(0.12, 0.14, 0.18, 1)));
                compare(placeOf(label).x, 0);
            }
        }

        function test_theHeadingOfTheDetailsIsCentredOnTheirButton() {
            const toggle = Find.button(root.group, "Show details");
            const heading = Find.text(root.group, "Token and bind details");
            compare(heading.width, toggle.x - 8);
            fuzzyCompare(heading.y + heading.height / 2, toggle.y + toggle.height / 2, 0.5);
        }

        function test_theDetailsAreHiddenAtFirst() {
            verify(Find.text(root.group, root.hint) !== null);
            const toggle = Find.button(root.group, "Show details");
            compare(toggle.mapToItem(root.group, toggle.width, 0).x, root.group.width);
            compare(Find.outputs(root.group).length, 0);
        }

        function test_theButtonTogglesTheDetails() {
            const collapsed = root.group.height;
            press("Show details");
            compare(root.viewModel.tokenDetailsExpanded, true);
            compare(Find.text(root.group, root.hint), null);
            compare(Find.outputs(root.group).length, 2);
            verify(Find.text(root.group, "Connector / server") !== null);
            verify(Find.text(root.group, "Binding result") !== null);
            tryVerify(() => root.group.height > collapsed + 100);
            press("Hide details");
            compare(root.viewModel.tokenDetailsExpanded, false);
            verify(Find.text(root.group, root.hint) !== null);
            tryCompare(root.group, "height", collapsed);
        }

        function test_withEveryOutputEmptyBothPanelsHaveNoData() {
            compare(bodies(), ["No data", "No data"]);
        }

        function test_aStatusOutputAloneIsFollowedByTwoLineBreaks() {
            answer("status", "x");
            root.viewModel.refreshAll();
            compare(bodies()[0], "x\n\n");
        }

        function test_aServerOutputAloneStandsAlone() {
            answer("server-health", "y");
            root.viewModel.checkServer();
            compare(bodies()[0], "y");
        }

        function test_statusAndServerAreJoinedByAnEmptyLine() {
            answer("status", "x");
            answer("server-health", "y");
            root.viewModel.refreshAll();
            compare(bodies()[0], "x\n\ny");
        }

        function test_aDisconnectOutputAloneStandsAlone() {
            answer("disconnect-binding", "d");
            root.viewModel.disconnectBinding();
            compare(bodies()[1], "d");
        }

        function test_aBindingOutputAloneStandsAlone() {
            answer("bind-status", "b");
            root.viewModel.refreshAll();
            compare(bodies()[1], "b");
        }

        function test_bindingAndDisconnectAreJoinedByAnEmptyLine() {
            answer("bind-status", "b");
            answer("disconnect-binding", "d");
            root.viewModel.disconnectBinding();
            compare(bodies()[1], "b\n\nd");
        }

        function test_openPanelsFollowNewOutputs() {
            compare(bodies(), ["No data", "No data"]);
            answer("server-health", "later");
            press("Check server");
            compare(bodies()[0], "later");
        }

        function test_theQuickStateFollowsTheWords_data() {
            return [{ tag: "details hidden", expanded: false }, { tag: "details open", expanded: true }];
        }

        function test_theQuickStateFollowsTheWords(row) {
            root.viewModel.tokenDetailsExpanded = row.expanded;
            verify(Find.text(root.group, "Connector: unknown \u2022 Server: unknown \u2022 Binding: not bound"));
            answer("status", "connector_health=ready");
            answer("server-health", "\"reachable\":false");
            answer("bind-status", "token_waiting");
            root.viewModel.refreshAll();
            verify(Find.text(root.group, "Connector: ready \u2022 Server: unreachable \u2022 Binding: token waiting"));
        }

        function test_eachButtonRunsItsCommand_data() {
            return [
                { tag: "Claim token", id: "claim-token", first: "claim-token tok" },
                { tag: "Disconnect", id: "disconnect-binding", first: "disconnect-binding" },
                { tag: "Check server", id: "check-server", first: "server-health" },
                { tag: "Show details", id: "toggle-token-details", first: undefined },
            ];
        }

        function test_eachButtonRunsItsCommand(row) {
            root.viewModel.bindToken = "tok";
            compare(Find.button(root.group, row.tag).buttonId, row.id);
            press(row.tag);
            compare(Surroundings.connector.calls()[0], row.first);
            compare(root.viewModel.pressedButtonId, row.id);
            root.viewModel.stopStatusPolling();
        }

        function test_onlyClaimingIsProminent() {
            compare(Find.buttons(root.group).filter(button => button.prominent).map(button => button.title),
                ["Claim token"]);
        }

        function test_anEmptyTokenClaimsNothing() {
            press("Claim token");
            compare(Surroundings.connector.calls(), []);
        }

        function input() {
            return Find.input(root.group, "Bind token from " + root.group.webHost);
        }

        function test_typingWritesEachKeystroke() {
            input().forceActiveFocus();
            keyClick("a");
            compare(root.viewModel.bindToken, "a");
            keyClick(" ");
            compare(root.viewModel.bindToken, "a ");
            keyClick("b");
            compare(root.viewModel.bindToken, "a b");
            keyClick(Qt.Key_Backspace);
            compare(root.viewModel.bindToken, "a ");
        }

        function test_aWrittenTokenReplacesTheText() {
            input().forceActiveFocus();
            keyClick("a");
            root.viewModel.bindToken = "written";
            compare(input().text, "written");
            keyClick("x");
            root.viewModel.bindToken = "again";
            compare(input().text, "again");
        }

        function test_theCursorStaysWhileTypingInTheMiddle() {
            root.viewModel.bindToken = "abcdef";
            input().forceActiveFocus();
            input().cursorPosition = 3;
            keyClick("x");
            keyClick("y");
            compare(root.viewModel.bindToken, "abcxydef");
            compare(input().cursorPosition, 5);
            keyClick(Qt.Key_Backspace);
            keyClick(Qt.Key_Delete);
            compare(root.viewModel.bindToken, "abcxef");
            compare(input().cursorPosition, 4);
        }

        function test_afterDisconnectTheFieldIsEmpty() {
            input().forceActiveFocus();
            keyClick("a");
            press("Disconnect");
            compare(root.viewModel.bindToken, "");
            compare(input().text, "");
        }

        function test_afterClaimingTheFieldKeepsTheToken() {
            root.viewModel.bindToken = "token";
            press("Claim token");
            root.viewModel.stopStatusPolling();
            compare(input().text, "token");
        }

        function test_thePlaceholderIsSeenOnlyWithoutText() {
            const placeholder = "Bind token from " + root.group.webHost;
            verify(Find.text(root.group, placeholder) !== null);
            root.viewModel.bindToken = "x";
            compare(Find.text(root.group, placeholder), null);
        }

        function test_aTokenIsPastedWhole() {
            Surroundings.setClipboard("pasted-token");
            input().forceActiveFocus();
            keySequence(StandardKey.Paste);
            compare(root.viewModel.bindToken, "pasted-token");
        }
    }
}
