import QtQuick
import QtTest
import BrindlecoveConnectorGUI
import "../find.js" as Find

Item {
    height: 500
    width: 600

    SurfaceCard {
        id: subtitled

        subtitle: "What it is for"
        title: "Updates"
        width: 400

        Rectangle {
            id: subtitledContent

            implicitHeight: 50
            implicitWidth: 100
        }
    }

    SurfaceCard {
        id: emptySubtitle

        subtitle: ""
        title: "Updates"
        width: 400

        Rectangle {
            implicitHeight: 50
            implicitWidth: 100
        }
    }

    SurfaceCard {
        id: untitled

        title: "Updates"
        width: 400

        Rectangle {
            implicitHeight: 50
            implicitWidth: 100
        }
    }

    TestCase {
        name: "SurfaceCard"
        when: windowShown

        function test_anEmptySubtitleLeavesNoGap() {
            const heading = Find.text(emptySubtitle, "Updates");
            compare(Find.texts(emptySubtitle), ["Updates"]);
            compare(emptySubtitle.implicitHeight, 20 + heading.height + 16 + 50 + 20);
        }

        function test_noSubtitleLooksLikeAnEmptyOne() {
            compare(Find.texts(untitled), Find.texts(emptySubtitle));
            compare(untitled.implicitHeight, emptySubtitle.implicitHeight);
            compare(grabImage(untitled).equals(grabImage(emptySubtitle)), true);
        }

        function test_aSubtitleStandsBetweenTitleAndContent() {
            const heading = Find.text(subtitled, "Updates");
            const subtitle = Find.text(subtitled, "What it is for");
            compare(heading.x, 20);
            compare(subtitle.x, 20);
            compare(subtitle.y, heading.y + heading.height + 4);
            const place = subtitledContent.mapToItem(subtitled, 0, 0);
            compare(place.x, 20);
            compare(place.y, subtitle.y + subtitle.height + 16);
            compare(String(subtitle.color), String(Qt.rgba(0.38, 0.42, 0.50, 1)));
            compare(String(heading.color), String(Qt.rgba(0.10, 0.12, 0.16, 1)));
            compare(heading.font.pixelSize, SystemFonts.thirdTitleSize);
            compare(heading.font.weight, Font.DemiBold);
            for (const part of [heading, subtitle, subtitledContent.parent])
                compare(part.width, 400 - 2 * 20);
        }

        function test_aSubtitleThatComesLaterMakesRoom() {
            const without = untitled.implicitHeight;
            untitled.subtitle = "Now";
            compare(untitled.implicitHeight, without + 4 + Find.text(untitled, "Now").height);
            untitled.subtitle = "";
            compare(untitled.implicitHeight, without);
        }

        function test_theCardLooksAsItShould() {
            compare(String(subtitled.color), String(Qt.rgba(1, 1, 1, 1)));
            compare(subtitled.radius, 20);
            compare(subtitled.borderColor, Qt.rgba(0.84, 0.87, 0.92, 1));
            compare(subtitled.shadowColor, Qt.rgba(0, 0, 0, 0.06));
            compare(subtitled.shadowBlur, 18);
            compare(subtitled.shadowOffset, 8);
        }

        function test_itGrowsWithItsContent() {
            const before = subtitled.implicitHeight;
            subtitledContent.implicitHeight = 90;
            compare(subtitled.implicitHeight, before + 40);
            subtitledContent.implicitHeight = 50;
        }

        function test_itsNaturalWidthIsThatOfItsWidestPart() {
            const textWidth = Find.text(subtitled, "What it is for").implicitWidth;
            compare(subtitled.naturalWidth, 40 + Math.ceil(Math.max(textWidth, 100)));
            subtitledContent.implicitWidth = 333;
            compare(subtitled.naturalWidth, 40 + 333);
            subtitledContent.implicitWidth = 100;
        }
    }
}
