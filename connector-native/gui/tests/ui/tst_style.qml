import QtQuick
import QtTest
import BrindlecoveConnectorGUI

// Whatever the colours are, they can be told apart.
TestCase {
    name: "Style"

    function blended(front, back) {
        const mix = part => front[part] * front.a + back[part] * (1 - front.a);
        return { r: mix("r"), g: mix("g"), b: mix("b") };
    }

    // The relative luminance of WCAG 2, from 0 for black to 1 for white.
    function luminance(color) {
        const linear = part => part <= 0.04045 ? part / 12.92 : Math.pow((part + 0.055) / 1.055, 2.4);
        return 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b);
    }

    function contrast(front, back) {
        const levels = [luminance(blended(front, back)), luminance(back)].sort((one, other) => one - other);
        return (levels[1] + 0.05) / (levels[0] + 0.05);
    }

    function test_theNamedColoursAreWhatTheyAreCalled_data() {
        return [
            { tag: "blue", color: Style.accent, hue: 215 },
            { tag: "green on dark", color: Style.greenOnDark, hue: 135 },
            { tag: "green on light", color: Style.greenOnLight, hue: 135 },
            { tag: "orange", color: Style.orangeOnDark, hue: 35 },
        ];
    }

    function test_theNamedColoursAreWhatTheyAreCalled(row) {
        fuzzyCompare(row.color.hsvHue * 360, row.hue, 10);
        verify(row.color.hsvSaturation > 0.7, row.color.hsvSaturation);
        compare(row.color.a, 1);
    }

    function test_everyTextIsReadable_data() {
        const texts = [
            { tag: "title", front: Style.title, back: Style.pageBottom },
            { tag: "line below it", front: Style.secondary, back: Style.pageTop },
            { tag: "title of a card", front: Style.cardTitle, back: Style.card },
            { tag: "subtitle of a card", front: Style.cardSubtitle, back: Style.card },
            { tag: "headline", front: Style.headline, back: Style.panel },
            { tag: "output", front: Style.output, back: Style.panel },
            { tag: "status", front: Style.status, back: Style.card },
            { tag: "valid", front: Style.greenOnLight, back: Style.card },
            { tag: "placeholder", front: Style.placeholder, back: Style.field },
            { tag: "button", front: Style.buttonText, back: Style.button },
            { tag: "prominent button", front: Style.accentText, back: Style.accent },
            { tag: "prominent button below the pointer", front: Style.accentText, back: Style.accentHovered },
            { tag: "prominent button, pressed", front: Style.accentText, back: Style.accentPressed },
        ];
        for (const tile of [Style.tileTopLeft, Style.tileBottomRight]) {
            for (const [tag, front] of [["caption", Style.tileCaption], ["good", Style.greenOnDark], ["bad", Style.orangeOnDark]])
                texts.push({ tag: tag + " on " + tile, front: front, back: tile });
        }
        return texts;
    }

    function test_everyTextIsReadable(row) {
        verify(contrast(row.front, row.back) >= 4.5, contrast(row.front, row.back));
    }

    function test_aDisabledEntryIsFainterAndStillSeen() {
        verify(contrast(Style.disabledText, Style.card) >= 2);
        verify(contrast(Style.disabledText, Style.card) < contrast(Style.headline, Style.card) / 2);
    }

    function test_whatIsUsedGetsDarker_data() {
        return [
            { tag: "button", steps: [Style.accent, Style.accentHovered, Style.accentPressed] },
            { tag: "scroll bar", steps: [Style.scrollThumb, Style.scrollThumbHovered, Style.scrollThumbPressed] },
        ];
    }

    function test_whatIsUsedGetsDarker(row) {
        const levels = row.steps.map(color => contrast(color, Style.card));
        verify(levels[0] >= 3, levels);
        verify(levels[1] > levels[0] * 1.1, levels);
        verify(levels[2] > levels[1] * 1.1, levels);
    }
}
