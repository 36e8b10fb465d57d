import QtQuick
import QtTest
import Testing
import BrindlecoveConnectorGUI
import "../find.js" as Find

Item {
    id: root

    property ConnectorViewModel viewModel
    property ApiGroup group
    readonly property string okxBalance: '{"data":[{"details":[{"availBal":"12.5","cashBal":"13","ccy":"USDT"}]}]}'
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
        name: "BalancePanel"
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

        function texts() {
            return Find.texts(root.group);
        }

        function test_theBalanceLineHasNoBox() {
            const line = Find.text(root.group, "Balance not loaded yet");
            const boxes = Find.all(root.group, item => item.radius === 16 && item.visible);
            compare(boxes.length, 0);
            compare(String(line.color), String(Qt.rgba(0.29, 0.33, 0.41, 1)));
        }

        function test_anEmptyAnswerIsNoBalance() {
            press("Load balance");
            compare(Surroundings.connector.calls(), ["balance bybit"]);
            verify(Find.text(root.group, "Balance not loaded yet") !== null);
        }

        function test_aBalanceIsShownInItsPanel() {
            press("OKX");
            answer("balance", root.okxBalance);
            press("Load balance");
            compare(Find.text(root.group, "Balance not loaded yet"), null);
            const shown = texts();
            const at = shown.indexOf("Balance");
            compare(shown.slice(at, at + 4), ["Balance", "12.5 USDT", "Available balance", "Cash balance: 13 USDT"]);
            const headline = Find.text(root.group, "12.5 USDT");
            compare(headline.font.weight, Font.DemiBold);
            compare(String(headline.color), String(Qt.rgba(0.12, 0.14, 0.18, 1)));
            const panel = headline.parent.parent;
            compare(panel.color, Qt.rgba(0.98, 0.99, 1.00, 1));
            compare(panel.borderColor, Qt.rgba(0.85, 0.88, 0.93, 1));
            compare(panel.radius, 16);
            compare(panel.width, 1000);
            for (const line of shown.slice(at, at + 4)) {
                compare(Find.text(panel, line).width, 1000 - 2 * 16);
            }
            compare(Find.text(root.group, "Balance").mapToItem(panel, 0, 0), Qt.point(16, 16));
            compare(Find.text(root.group, "Balance").font.pixelSize, SystemFonts.captionSize);
            compare(headline.font.pixelSize, SystemFonts.thirdTitleSize);
        }

        function test_thePanelIsAsHighAsItsLines() {
            press("OKX");
            answer("balance", root.okxBalance);
            press("Load balance");
            const headline = Find.text(root.group, "12.5 USDT");
            const panel = headline.parent.parent;
            const lines = ["Balance", "12.5 USDT", "Available balance", "Cash balance: 13 USDT"];
            let bottom = 16;
            for (const line of lines.map(line => Find.text(panel, line))) {
                tryVerify(() => line.mapToItem(panel, 0, 0).y === bottom);
                bottom += line.height + 8;
            }
            tryCompare(panel, "height", bottom - 8 + 16);
        }

        function test_aConnectorErrorIsShownInThePanel() {
            answer("balance", '{"status":"error","reason":"invalid_api_key"}');
            press("Load balance");
            verify(Find.text(root.group, "Could not load balance") !== null);
            verify(Find.text(root.group, "invalid api key") !== null);
        }

        function test_anUnreadableBalancePointsToTheLog() {
            answer("balance", "{}");
            press("Load balance");
            verify(Find.text(root.group, "Balance loaded") !== null);
            verify(Find.text(root.group, "Raw response available in technical log") !== null);
        }

        function test_thePanelFollowsTheTab() {
            press("OKX");
            answer("balance", root.okxBalance);
            press("Load balance");
            press("Bybit");
            verify(Find.text(root.group, "Balance not loaded yet") !== null);
            press("OKX");
            verify(Find.text(root.group, "12.5 USDT") !== null);
        }

        function test_aNewBalanceReplacesTheShownOne() {
            press("OKX");
            answer("balance", root.okxBalance);
            press("Load balance");
            answer("balance", root.okxBalance.replace("12.5", "99"));
            press("Load balance");
            verify(Find.text(root.group, "99 USDT") !== null);
            compare(Find.text(root.group, "12.5 USDT"), null);
        }

        function test_theBalanceStaysBetweenCommandsAndFootnote() {
            answer("balance", "{}");
            press("Load balance");
            const panel = Find.text(root.group, "Balance loaded").parent.parent;
            const bottom = panel.mapToItem(root.group, 0, 0).y + panel.height;
            tryVerify(() => Find.text(root.group, root.footnote).y === bottom + 14);
        }
    }
}
