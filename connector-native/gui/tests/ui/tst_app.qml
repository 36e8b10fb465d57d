import QtQuick
import QtTest
import Testing
import BrindlecoveConnectorGUI
import "find.js" as Find

Item {
    id: root

    property BrindlecoveConnectorGUIApp app

    height: 10
    width: 10

    Component {
        id: apps

        BrindlecoveConnectorGUIApp {}
    }

    TestCase {
        name: "BrindlecoveConnectorGUIApp"
        when: windowShown

        function init() {
            Surroundings.connector.reset();
            root.app = createTemporaryObject(apps, null);
            root.app.requestActivate();
            tryVerify(() => Surroundings.connector.calls().length >= 5);
            tryVerify(() => Surroundings.connector.calls().length === 9);
        }

        function page() {
            return root.app.contentItem;
        }

        function cards() {
            return Find.all(page(), item => item.naturalWidth !== undefined);
        }

        function tiles() {
            return Find.all(page(), item => item.wordColor !== undefined);
        }

        function viewModel() {
            return Find.first(page(), item => item.viewModel !== undefined).viewModel;
        }

        function area() {
            return Find.first(page(), item => item.maximumY !== undefined);
        }

        function topOf(item) {
            return item.mapToItem(area().content, 0, 0).y;
        }

        function test_theWindowHasATitleAndAMinimum() {
            compare(root.app.title, "Brindlecove Connector");
            compare(root.app.minimumWidth, 1120);
            compare(root.app.minimumHeight, 760);
            verify(root.app.maximumWidth > 10000);
            verify(root.app.visible);
        }

        function test_itCannotBeMadeSmaller() {
            root.app.width = 500;
            root.app.height = 400;
            tryCompare(root.app, "width", 1120);
            tryCompare(root.app, "height", 760);
        }

        function test_oneThatKeepsTheUsualSizeIsNotTiled() {
            root.app.tiled = true;
            compare([root.app.minimumWidth, root.app.minimumHeight], [0, 0]);
            tryVerify(() => !root.app.tiled);
            compare([root.app.minimumWidth, root.app.minimumHeight], [1120, 760]);
        }

        function test_inAnotherSizeItStaysTiled_data() {
            return [
                { tag: "another width", width: 1300, height: 760 },
                { tag: "another height", width: 1120, height: 900 },
            ];
        }

        function test_inAnotherSizeItStaysTiled(row) {
            root.app.width = row.width;
            root.app.height = row.height;
            root.app.tiled = true;
            wait(700);
            verify(root.app.tiled);
        }

        function test_onceItWasNotTiledItIsNeverAgain() {
            root.app.width = 1300;
            verify(!root.app.tiled);
        }

        function test_theTilesStandInOrder() {
            compare(tiles().map(tile => tile.title), ["Connector", "Server", "Binding"]);
            const widths = tiles().map(tile => tile.width);
            fuzzyCompare(widths[1], widths[0], 0.01);
            fuzzyCompare(widths[2], widths[0], 0.01);
            fuzzyCompare(widths[0] * 3 + 2 * 12, 1120 - 56, 0.01);
        }

        function test_theTilesShowTheWords() {
            Surroundings.connector.answer("status", "connector_health=ready");
            Surroundings.connector.answer("server-health", "\"reachable\":true");
            Surroundings.connector.answer("bind-status", "\"bindState\":\"authorized\"");
            mouseClick(Find.button(page(), "Refresh all"));
            compare(tiles().map(tile => tile.word), ["ready", "reachable", "authorized"]);
            for (const tile of tiles())
                compare(tile.wordColor, Style.greenOnDark);
        }

        function test_withoutAnswersAllTilesAreOrange() {
            compare(tiles().map(tile => tile.word), ["starting", "unknown", "not bound"]);
            for (const tile of tiles())
                compare(tile.wordColor, Style.orangeOnDark);
        }

        function test_theCardsStandInOrder() {
            compare(cards().map(card => [card.title, card.subtitle]), [
                ["Connector bind", "Paste the bind token from the web app, claim it here, then finish the wallet signature in the browser."],
                ["Exchange API", "Validate credentials against the selected exchange, save them locally, then load balances when needed."],
                ["Updates", "Check for a new version, download it, then install it when you are ready."],
                ["Technical log", "All raw command output lives here and stays hidden by default."],
            ]);
        }

        function test_sectionsAreTwentyApart() {
            const header = Find.button(page(), "Refresh all").parent;
            const sections = [header, tiles()[0], ...cards()];
            compare(topOf(header), 28);
            for (let i = 1; i < sections.length; ++i)
                fuzzyCompare(topOf(sections[i]), topOf(sections[i - 1]) + sections[i - 1].height + 20, 0.01);
            const last = sections[sections.length - 1];
            fuzzyCompare(area().content.height, topOf(last) + last.height + 28, 0.01);
            for (const card of cards())
                compare(card.mapToItem(area().content, 0, 0).x, 28);
        }

        function test_onlyTheUpdateCardIsNarrower() {
            const widths = cards().map(card => card.width);
            compare([widths[0], widths[1], widths[3]], [1064, 1064, 1064]);
            verify(widths[2] < 1064);
            compare(widths[2], Math.min(cards()[2].naturalWidth, 1064));
        }

        function test_theCardsFollowAWiderWindow() {
            root.app.width = 1500;
            tryCompare(cards()[0], "width", 1500 - 56);
            verify(cards()[2].width < 1000);
        }

        function test_theHeaderNamesTheProgram() {
            const title = Find.text(page(), "Brindlecove Connector");
            compare(String(title.color), String(Qt.rgba(0.08, 0.10, 0.14, 1)));
            verify(title.font.bold);
            const line = Find.text(page(), "Token-first bridge between web terminal, server and exchange APIs");
            compare(String(line.color), String(Qt.rgba(0.29, 0.33, 0.41, 1)));
            compare(line.y, title.y + title.height + 6);
            const button = Find.button(page(), "Refresh all");
            verify(button.prominent);
            compare(button.mapToItem(area().content, 0, 0).x + button.width, 1120 - 28);
        }

        function test_typeSizesFollowTheSystems() {
            const size = text => Find.text(page(), text).font.pixelSize;
            const body = SystemFonts.size;
            compare(size("Brindlecove Connector"), Math.round(2.1 * body));
            compare(size("Token-first bridge between web terminal, server and exchange APIs"), body);
            compare(size("starting"), Math.round(1.3 * body));
            compare(size("Server"), Math.round(0.9 * body));
        }

        function test_refreshAllIsNoActionButton() {
            compare(Find.button(page(), "Refresh all").buttonId, undefined);
            mouseClick(Find.button(page(), "Refresh all"));
            compare(Surroundings.connector.calls().slice(9), ["status", "server-health", "bind-status", "status"]);
            compare(viewModel().pressedButtonId, "");
        }

        function test_idsOfButtonsAreDistinct() {
            const ids = Find.buttons(page()).map(button => button.buttonId).filter(id => id !== undefined);
            verify(ids.length > 1);
            compare(new Set(ids).size, ids.length);
        }

        function test_aSelectedExchangeIsLoaded() {
            mouseClick(Find.button(page(), "OKX"));
            compare(Surroundings.connector.calls().slice(9), ["load-credentials okx"]);
            mouseClick(Find.button(page(), "OKX"));
            compare(Surroundings.connector.calls().length, 10);
        }

        function test_savedCredentialsAreShown() {
            Surroundings.connector.answer("load-credentials", "status=ok\napi_key=saved-key\napi_secret=saved-secret\n");
            mouseClick(Find.button(page(), "Gate"));
            compare(Find.input(page(), "API key").text, "saved-key");
            compare(Find.input(page(), "API secret").text, "saved-secret");
            verify(Find.button(page(), "Update and save keys") !== null);
        }

        function test_tallContentScrolls() {
            root.app.height = 760;
            const all = area();
            viewModel().logsExpanded = true;
            viewModel().tokenDetailsExpanded = true;
            tryVerify(() => all.maximumY > 300);
            mouseWheel(page(), 560, 120, 0, -120);
            verify(all.contentY > 0);
        }

        function test_thePageIsAGradient() {
            const image = grabImage(page());
            const top = image.pixel(5, 1);
            const bottom = image.pixel(5, page().height - 2);
            fuzzyCompare(top, Qt.rgba(0.94, 0.96, 0.99, 1), 1);
            fuzzyCompare(bottom, Qt.rgba(0.92, 0.94, 0.98, 1), 1);
        }
    }
}
