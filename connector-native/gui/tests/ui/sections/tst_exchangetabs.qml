import QtQuick
import QtTest
import BrindlecoveConnectorGUI
import "../find.js" as Find

Item {
    height: 200
    width: 1000

    ConnectorViewModel {
        id: viewModel
    }

    ExchangeTabs {
        id: tabs

        exchanges: viewModel.exchanges
        selectedId: "okx"
    }

    SignalSpy {
        id: selections

        signalName: "select"
        target: tabs
    }

    TestCase {
        name: "ExchangeTabs"
        when: windowShown

        function init() {
            tabs.selectedId = "okx";
            selections.clear();
        }

        function tab(title) {
            return Find.button(tabs, title);
        }

        function selectedTitles() {
            return Find.buttons(tabs).filter(button => button.prominent).map(button => button.title);
        }

        function test_thereIsOneTabForEachExchangeInOrder() {
            compare(Find.buttons(tabs).map(button => button.title),
                ["Bybit", "OKX", "Gate", "BingX", "KuCoin", "Bitget"]);
        }

        function test_theTabsStandInARow() {
            const buttons = Find.buttons(tabs);
            for (let i = 1; i < buttons.length; ++i) {
                compare(buttons[i].x, buttons[i - 1].x + buttons[i - 1].width + 8);
                compare(buttons[i].y, buttons[0].y);
            }
        }

        function test_onlyTheExactIdIsSelected_data() {
            return [
                { tag: "an id", id: "kucoin", titles: ["KuCoin"] },
                { tag: "the first id", id: "bybit", titles: ["Bybit"] },
                { tag: "capitalised", id: "Kucoin", titles: [] },
                { tag: "the name", id: "KuCoin", titles: [] },
                { tag: "with a blank", id: "kucoin ", titles: [] },
                { tag: "unknown", id: "nowhere", titles: [] },
                { tag: "empty", id: "", titles: [] },
            ];
        }

        function test_onlyTheExactIdIsSelected(row) {
            tabs.selectedId = row.id;
            compare(selectedTitles(), row.titles);
        }

        function test_aPressReportsTheIdAndSelectsNothing() {
            mouseClick(tab("Gate"));
            compare(selections.count, 1);
            compare(selections.signalArguments[0][0], "gate");
            compare(tabs.selectedId, "okx");
            compare(selectedTitles(), ["OKX"]);
        }

        function test_theSelectedTabReportsItsPressToo() {
            mouseClick(tab("OKX"));
            compare(selections.count, 1);
            compare(selections.signalArguments[0][0], "okx");
        }

        function test_thePaddingIsPartOfTheTab() {
            const bitget = tab("Bitget");
            mouseClick(bitget, 2, 2);
            mouseClick(bitget, bitget.width - 2, bitget.height - 2);
            compare(selections.count, 2);
        }

        function test_tabsLookAsTheyShould() {
            const selected = tab("OKX");
            const other = tab("Gate");
            compare(selected.face.color, Style.accent);
            compare(selected.face.borderColor.a, 0);
            compare(selected.face.shadowColor, Qt.rgba(Style.accent.r, Style.accent.g, Style.accent.b, 0.16));
            compare([selected.face.shadowBlur, selected.face.shadowOffset], [5, 2]);
            compare(other.face.color, Qt.rgba(1, 1, 1, 1));
            compare(other.face.borderColor, Qt.rgba(0.78, 0.81, 0.86, 1));
            compare(other.face.shadowColor, Qt.rgba(0, 0, 0, 0.03));
            compare([other.face.shadowBlur, other.face.shadowOffset], [2, 1]);
            compare(other.face.radius, 12);
            const label = Find.text(other, "Gate");
            compare(other.width, Math.ceil(label.implicitWidth) + 28);
            compare(other.height, Math.ceil(label.implicitHeight) + 20);
            compare(String(label.color), String(Qt.rgba(0.13, 0.15, 0.20, 1)));
        }

        function test_tabsHaveNoPressFeedback() {
            mousePress(tab("Gate"));
            compare(tab("Gate").scale, 1);
            compare(tab("Gate").opacity, 1);
            mouseRelease(tab("Gate"));
            compare(viewModel.pressedButtonId, "");
        }

        function test_arrowKeysMoveTheFocusOnly() {
            tab("OKX").forceActiveFocus();
            keyClick(Qt.Key_Right);
            verify(tab("Gate").activeFocus);
            keyClick(Qt.Key_Left);
            keyClick(Qt.Key_Left);
            verify(tab("Bybit").activeFocus);
            keyClick(Qt.Key_Left);
            verify(tab("Bybit").activeFocus);
            compare(selections.count, 0);
            keyClick(Qt.Key_Space);
            compare(selections.signalArguments[0][0], "bybit");
        }

        // The pixels below a tab, downwards: whether they are of the focus ring.
        function ringBelow(title) {
            const image = grabImage(tabs.parent);
            const place = tab(title);
            return [0, 1, 2, 3].map(
                y => Find.isNear(image.pixel(place.x + place.width / 2, place.height + y), Style.accent));
        }

        function test_arrowKeysMoveTheFocusRing() {
            const ring = [false, true, true, false];
            const none = [false, false, false, false];
            tab("Gate").forceActiveFocus();
            compare(ringBelow("Gate"), none);
            keyClick(Qt.Key_Right);
            compare(ringBelow("BingX"), ring);
            keyClick(Qt.Key_Left);
            compare(ringBelow("Gate"), ring);
            compare(ringBelow("BingX"), none);
        }

        function test_aSelectionMovesNoTab() {
            const places = Find.buttons(tabs).map(button => button.x);
            tabs.selectedId = "bitget";
            compare(Find.buttons(tabs).map(button => button.x), places);
        }
    }
}
