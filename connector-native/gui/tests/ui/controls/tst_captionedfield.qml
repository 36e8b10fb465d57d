import QtQuick
import QtTest
import BrindlecoveConnectorGUI
import "../find.js" as Find

Item {
    height: 300
    width: 600

    CaptionedField {
        id: captioned

        caption: "API key"
        width: 200

        Item {
            id: content

            height: 30
            width: 200
        }
    }

    TestCase {
        name: "CaptionedField"
        when: windowShown

        function test_theCaptionStandsAboveItsField() {
            const caption = Find.text(captioned, "API key");
            compare(caption.font.pixelSize, SystemFonts.captionSize);
            compare(caption.y, 0);
            tryCompare(content, "y", caption.height + 8);
        }

        function test_aLongCaptionWraps() {
            const height = captioned.height;
            captioned.caption = "a caption that is much longer than the field below it is wide";
            const caption = Find.text(captioned, captioned.caption);
            compare(caption.width, 200);
            verify(caption.lineCount > 1);
            tryVerify(() => captioned.height > height);
            captioned.caption = "API key";
        }
    }
}
