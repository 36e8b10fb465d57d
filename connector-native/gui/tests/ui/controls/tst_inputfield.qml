import QtQuick
import QtTest
import BrindlecoveConnectorGUI

Item {
    height: 100
    width: 400

    InputField {
        id: field

        fieldText: ""
        placeholder: "API key"
        width: 200
    }

    TestCase {
        name: "InputField"
        when: windowShown

        function init() {
            field.fieldText = "";
            field.height = field.implicitHeight;
            field.input.focus = false;
        }

        function placeholder() {
            return Array.from(field.children).find(item => item.text === "API key");
        }

        function test_theBoxLooksAsItShould() {
            compare(field.color, Qt.rgba(1, 1, 1, 1));
            compare(field.radius, 6);
            compare(field.borderColor, Qt.rgba(0.78, 0.81, 0.86, 1));
            mouseClick(field);
            tryCompare(field, "borderColor", Style.accent);
        }

        function test_theTextLooksAsItShould() {
            compare(String(field.input.color), String(Qt.rgba(0.12, 0.14, 0.18, 1)));
            compare(String(field.input.selectionColor), String(Style.accent));
            compare(String(field.input.selectedTextColor), String(Style.accentText));
            compare(field.input.font.pixelSize, SystemFonts.size);
        }

        function test_thePlaceholderLooksLikeATextThatIsFainter() {
            const label = placeholder();
            compare(String(label.color), String(Style.placeholder));
            compare(label.font.pixelSize, SystemFonts.size);
            compare(label.textFormat, Text.PlainText);
            compare(label.elide, Text.ElideRight);
            const text = field.input;
            const left = text.mapToItem(field, text.leftPadding, 0).x;
            compare(label.mapToItem(field, 0, 0).x, left);
            compare(left, 9);
            compare(label.verticalAlignment, Text.AlignVCenter);
        }

        function test_theTextStaysInTheMiddleOfAHigherField() {
            field.fieldText = "key";
            const before = field.input.positionToRectangle(0).y;
            field.height = 3 * field.implicitHeight;
            fuzzyCompare(field.input.positionToRectangle(0).y, before + field.implicitHeight, 1);
        }

        function test_thePlaceholderGoesWithTheText() {
            verify(placeholder().visible);
            field.fieldText = "key";
            verify(!placeholder().visible);
        }

        function test_itIsAsHighAsAButton() {
            compare(field.height, button.height);
        }
    }

    PlainButton {
        id: button

        title: "Claim token"
        y: 50
    }
}
