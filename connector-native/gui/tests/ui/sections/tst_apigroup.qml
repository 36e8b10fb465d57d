import QtQuick
import QtTest
import Testing
import BrindlecoveConnectorGUI
import "../find.js" as Find

Item {
    id: root

    property ConnectorViewModel viewModel
    property ApiGroup group
    readonly property string valid: "status=valid_read_only\ncredentials_saved=true\n"
    readonly property string footnote: "Live credential validation is enabled for Bybit, OKX, Gate, BingX, KuCoin, and Bitget."

    height: 700
    width: 1000

    Component {
        id: fixtures

        Item {
            property alias viewModel: viewModel
            property alias group: group

            ConnectorViewModel {
                id: viewModel
            }

            ApiGroup {
                id: group

                viewModel: viewModel
                width: 1000
            }
        }
    }

    TestCase {
        name: "ApiGroup"
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

        function answer(command, output) {
            Surroundings.connector.answer(command, output);
        }

        function hasPassphrase() {
            return Find.field(root.group, "Passphrase") !== null && Find.text(root.group, "Passphrase") !== null;
        }

        function status() {
            return Find.first(root.group, item => Find.isText(item) && item.text.startsWith("Status: "));
        }

        function test_aFreshGroupSaysSo() {
            verify(Find.button(root.group, "Validate and save keys") !== null);
            compare(status().text, "Status: not checked");
            verify(Find.text(root.group, "Balance not loaded yet") !== null);
            verify(Find.text(root.group, root.footnote) !== null);
            verify(!hasPassphrase());
        }

        function test_onlySomeExchangesHaveAPassphrase_data() {
            return [
                { tag: "Bybit", shown: false },
                { tag: "OKX", shown: true },
                { tag: "Gate", shown: false },
                { tag: "BingX", shown: false },
                { tag: "KuCoin", shown: true },
                { tag: "Bitget", shown: true },
            ];
        }

        function test_onlySomeExchangesHaveAPassphrase(row) {
            press(row.tag);
            compare(hasPassphrase(), row.shown);
        }

        function test_anAbsentPassphraseTakesNoSpace() {
            const without = root.group.height;
            const commandsWithout = Find.button(root.group, "Load balance").mapToItem(root.group, 0, 0).y;
            press("OKX");
            const field = Find.field(root.group, "Passphrase");
            tryCompare(root.group, "height", without + field.parent.height + 14);
            press("Gate");
            tryCompare(root.group, "height", without);
            compare(Find.button(root.group, "Load balance").mapToItem(root.group, 0, 0).y, commandsWithout);
            const keyRow = Find.field(root.group, "API key").parent.parent;
            compare(commandsWithout, keyRow.y + keyRow.height + 14);
        }

        function test_thePassphraseStandsUnderTheKeysAsWideAsTheGroup() {
            press("OKX");
            const field = Find.field(root.group, "Passphrase");
            const block = field.parent;
            const keyRow = Find.field(root.group, "API key").parent.parent;
            tryVerify(() => block.mapToItem(root.group, 0, 0).y === keyRow.y + keyRow.height + 14);
            compare(block.width, 1000);
            compare(field.width, 1000);
            compare(Find.texts(block), ["Passphrase", "Passphrase"]);
        }

        function test_theTypedPassphraseReappears() {
            press("OKX");
            Find.input(root.group, "Passphrase").forceActiveFocus();
            keyClick("p");
            keyClick("w");
            press("Bybit");
            verify(!hasPassphrase());
            press("KuCoin");
            compare(Find.input(root.group, "Passphrase").text, "");
            press("OKX");
            compare(Find.input(root.group, "Passphrase").text, "pw");
        }

        function test_eachExchangeKeepsWhatWasTyped() {
            Find.input(root.group, "API key").forceActiveFocus();
            keyClick("k");
            press("Gate");
            compare(Find.input(root.group, "API key").text, "");
            press("Bybit");
            compare(Find.input(root.group, "API key").text, "k");
        }

        function test_anUnknownExchangeSelectsNoTabAndFollowsTheFirst() {
            press("OKX");
            root.viewModel.selectedExchangeId = "nowhere";
            const tabs = Find.buttons(root.group).filter(button => button.buttonId === undefined);
            compare(tabs.length, root.viewModel.exchanges.length);
            verify(tabs.every(tab => !tab.prominent));
            verify(!hasPassphrase());
            compare(status().text, "Status: not checked");
            verify(Find.text(root.group, "Balance not loaded yet") !== null);
        }

        function test_fieldsWriteEachKeystroke_data() {
            return [
                { tag: "API key", property: "selectedApiKey" },
                { tag: "API secret", property: "selectedApiSecret" },
                { tag: "Passphrase", property: "selectedPassphrase" },
            ];
        }

        function test_fieldsWriteEachKeystroke(row) {
            press("OKX");
            const input = Find.input(root.group, row.tag);
            input.forceActiveFocus();
            keyClick("a");
            compare(root.viewModel[row.property], "a");
            keyClick("c");
            compare(root.viewModel[row.property], "ac");
            input.cursorPosition = 1;
            keyClick("b");
            compare(root.viewModel[row.property], "abc");
            compare(input.cursorPosition, 2);
            compare(status().text, "Status: not checked");
        }

        function test_onlyTheKeyIsReadable_data() {
            return [
                { tag: "API key", echo: TextInput.Normal },
                { tag: "API secret", echo: TextInput.Password },
                { tag: "Passphrase", echo: TextInput.Password },
            ];
        }

        function test_onlyTheKeyIsReadable(row) {
            press("OKX");
            const input = Find.input(root.group, row.tag);
            compare(input.echoMode, row.echo);
            input.forceActiveFocus();
            keyClick("s");
            keyClick("t");
            compare(input.displayText, row.echo === TextInput.Normal ? "st" : "\u2022\u2022");
        }

        function test_aMaskedFieldIsNotCopied() {
            Surroundings.setClipboard("before");
            root.viewModel.selectedApiSecret = "secret";
            const input = Find.input(root.group, "API secret");
            input.forceActiveFocus();
            input.selectAll();
            keySequence(StandardKey.Copy);
            keySequence(StandardKey.Cut);
            compare(Surroundings.clipboard(), "before");
        }

        function test_theFirstButtonFollowsTheVault() {
            answer("validate", root.valid);
            press("Validate and save keys");
            verify(Find.button(root.group, "Update and save keys") !== null);
            compare(Find.button(root.group, "Update and save keys").buttonId, "validate-save");
            compare(Find.button(root.group, "Validate and save keys"), null);
            press("Delete");
            verify(Find.button(root.group, "Validate and save keys") !== null);
            compare(status().text, "Status: not configured");
        }

        function test_onlyTheWordValidIsGreen_data() {
            return [
                { tag: "valid", output: "status=valid_trade_ready", word: "valid", green: true },
                { tag: "invalid", output: "status=invalid", word: "invalid", green: false },
                { tag: "error", output: "status=error", word: "error", green: false },
                { tag: "unknown", output: "", word: "unknown", green: false },
                { tag: "configured", output: "status=configured", word: "adapter exists, live validation pending", green: false },
            ];
        }

        function test_onlyTheWordValidIsGreen(row) {
            answer("validate", row.output);
            press("Validate and save keys");
            compare(status().text, "Status: " + row.word);
            const expected = row.green ? Style.greenOnLight : Qt.rgba(0.39, 0.43, 0.51, 1);
            compare(String(status().color), String(expected));
        }

        function test_theStatusStandsAtTheTrailingEdge() {
            compare(status().horizontalAlignment, Text.AlignRight);
            compare(status().mapToItem(root.group, 0, 0).x + status().width, 1000);
        }

        function test_theButtonsStandEightApart() {
            const titles = ["Validate and save keys", "Load balance", "Delete"];
            const row = [...titles.map(title => Find.button(root.group, title)), status()];
            for (let i = 1; i < row.length; ++i)
                compare(row[i].x, row[i - 1].x + row[i - 1].width + 8);
        }

        function test_theLinesBelowAreAsWideAsTheGroup() {
            const footnote = Find.text(root.group, root.footnote);
            compare(footnote.width, 1000);
            compare(footnote.font.pixelSize, SystemFonts.captionSize);
            compare(Find.text(root.group, "Balance not loaded yet").width, 1000);
        }

        function test_theButtonsAreCentredOnAStatusThatWraps() {
            answer("validate", "status=configured");
            press("Validate and save keys");
            root.group.width = 470;
            const button = Find.button(root.group, "Load balance");
            tryVerify(() => status().height > button.height);
            const center = item => item.mapToItem(root.group, 0, item.height / 2).y;
            tryVerify(() => Math.abs(center(button) - center(status())) <= 0.5);
            compare(status().mapToItem(root.group, 0, 0).x + status().width, 470);
            const panel = Find.text(root.group, "Balance not loaded yet");
            compare(panel.mapToItem(root.group, 0, 0).y, status().mapToItem(root.group, 0, 0).y + status().height + 14);
        }

        function test_buttonsRunTheirCommands_data() {
            return [
                { tag: "Validate and save keys", id: "validate-save", calls: ["validate okx key secret pass"] },
                { tag: "Load balance", id: "load-balance", calls: ["balance okx"] },
                { tag: "Delete", id: "delete-credentials", calls: ["delete-credentials okx"] },
            ];
        }

        function test_buttonsRunTheirCommands(row) {
            press("OKX");
            root.viewModel.selectedApiKey = "key";
            root.viewModel.selectedApiSecret = "secret";
            root.viewModel.selectedPassphrase = "pass";
            compare(Find.button(root.group, row.tag).buttonId, row.id);
            compare(Find.button(root.group, row.tag).prominent, row.id === "validate-save");
            press(row.tag);
            compare(Surroundings.connector.calls(), row.calls);
        }

        function test_aTabRunsNothingItself() {
            press("KuCoin");
            compare(root.viewModel.selectedExchangeId, "kucoin");
            compare(Surroundings.connector.calls(), []);
        }

        function test_deletionEmptiesTheFields() {
            Find.input(root.group, "API key").forceActiveFocus();
            keyClick("k");
            press("Delete");
            compare(Find.input(root.group, "API key").text, "");
        }

        function test_theKeyColumnsAreEquallyWide() {
            const key = Find.field(root.group, "API key");
            const secret = Find.field(root.group, "API secret");
            compare(key.width, 494);
            compare(secret.width, 494);
            compare(secret.mapToItem(root.group, 0, 0).x, 506);
            compare(secret.mapToItem(root.group, 0, 0).y, key.mapToItem(root.group, 0, 0).y);
        }
    }
}
