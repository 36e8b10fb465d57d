import QtQuick
import QtTest
import BrindlecoveConnectorGUI
import "../find.js" as Find

Item {
    height: 300
    width: 600

    StatusCard {
        id: card

        good: false
        title: "Connector"
        width: 300
        word: "unknown"
    }

    TestCase {
        name: "StatusCard"
        when: windowShown

        function test_onlyAGoodWordIsGreen_data() {
            return [{ tag: "good", good: true }, { tag: "not good", good: false }];
        }

        function test_onlyAGoodWordIsGreen(row) {
            card.word = "ready";
            card.good = row.good;
            compare(card.wordColor, row.good ? Style.greenOnDark : Style.orangeOnDark);
            verify(!Qt.colorEqual(Style.greenOnDark, Style.orangeOnDark));
            compare(String(Find.text(card, "ready").color), String(card.wordColor));
        }

        function test_theCaptionStandsAboveTheWord() {
            card.word = "starting";
            compare(Find.texts(card), ["Connector", "starting"]);
            const caption = Find.text(card, "Connector");
            const word = Find.text(card, "starting");
            compare(caption.font.pixelSize, SystemFonts.captionSize);
            compare(String(caption.color), String(Qt.rgba(1, 1, 1, 0.72)));
            compare(word.mapToItem(card, 0, 0).y - caption.mapToItem(card, 0, 0).y - caption.height, 8);
            compare(caption.mapToItem(card, 0, 0), Qt.point(18, 18));
            compare(word.mapToItem(card, 0, 0).y + word.height, card.height - 18);
            compare(word.font.pixelSize, SystemFonts.thirdTitleSize);
            compare(word.font.weight, Font.DemiBold);
        }

        function test_theTileLooksAsItShould() {
            compare(String(card.color), String(Qt.rgba(0.17, 0.19, 0.24, 1)));
            compare(card.endColor, Qt.rgba(0.12, 0.13, 0.17, 1));
            compare(card.radius, 18);
            compare(card.borderColor, Qt.rgba(1, 1, 1, 0.08));
            compare(card.shadowColor, Qt.rgba(0, 0, 0, 0.12));
            compare(card.shadowBlur, 10);
            compare(card.shadowOffset, 4);
        }

        function test_markupIsShownAsItIs() {
            card.word = "<b>bold</b>";
            verify(Find.text(card, "<b>bold</b>") !== null);
            compare(Find.text(card, "<b>bold</b>").textFormat, Text.PlainText);
        }

        function test_theWordMakesTheTileNoHigher() {
            card.word = "ready";
            const height = card.height;
            card.word = "adapter exists, live validation pending and a great deal more than fits on one line";
            compare(card.height, height);
            verify(Find.text(card, card.word).truncated);
            card.word = "";
            verify(card.height <= height);
        }
    }
}
