// SPDX-License-Identifier: MIT
import QtTest
import Clavo.Controls
import Clavo.Test

TestCase {
    name: "Theme"

    function init() {
        FakeDesktop.look(false, "#308cc6");
    }

    function test_followsTheDesktopsScheme() {
        verify(!Theme.dark);
        verify(Appearance.contrast(Theme.window, "white") < 1.5);

        FakeDesktop.look(true, "#308cc6");
        verify(Theme.dark);
        verify(Appearance.contrast(Theme.window, "black") < 1.5);
    }

    function test_takesTheDesktopsAccentColour() {
        compare(Theme.accent, "#308cc6");

        FakeDesktop.look(false, "#c64600");
        compare(Theme.accent, "#c64600");
    }

    function test_theUsersWishGoesBeforeThePalette() {
        FakeDesktop.wish(true, "#c64600");
        verify(Theme.dark);
        compare(Theme.accent, "#c64600");

        FakeDesktop.look(false, "#308cc6");
        verify(!Theme.dark);
        compare(Theme.accent, "#308cc6");
    }

    function test_bringsOutAnAccentColourThatCannotBeSeen() {
        FakeDesktop.look(false, "#fff0a0");
        verify(Appearance.contrast(Theme.accent, Theme.window) >= 3);
        verify(Appearance.contrast(Theme.textOnAccent, Theme.accent) >= 3);

        FakeDesktop.look(true, "#200000");
        verify(Appearance.contrast(Theme.accent, Theme.window) >= 3);
        verify(Appearance.contrast(Theme.textOnAccent, Theme.accent) >= 3);
    }

    function test_textOnAColourIsWhiteWhereItCanBeRead() {
        compare(Appearance.textOn("#3584e4"), "#ffffff");
        compare(Appearance.textOn("#f0c000"), "#000000");

        FakeDesktop.look(false, "#3584e4");
        compare(Theme.textOnAccent, "#ffffff");
    }

    function test_contrastIsThatOfWCAG() {
        fuzzyCompare(Appearance.contrast("white", "black"), 21, 0.001);
        fuzzyCompare(Appearance.contrast("black", "white"), 21, 0.001);
        fuzzyCompare(Appearance.contrast("#777777", "white"), 4.478, 0.001);
    }

    function test_readableKeepsAColourThatIs() {
        compare(Appearance.readable("#1a7f3c", "white", 4.5), "#1a7f3c");
    }

    function test_readableEndsAtBlackOrWhite() {
        compare(Appearance.readable("red", "#707070", 21), "#ffffff");
        compare(Appearance.readable("red", "white", 22), "#000000");
    }

    function test_textCanBeReadOnEverySurface_data() {
        return [{tag: "light", dark: false}, {tag: "dark", dark: true}];
    }

    function test_textCanBeReadOnEverySurface(row) {
        FakeDesktop.look(row.dark, "#308cc6");
        for (const surface of [Theme.window, Theme.tile, Theme.control, Theme.controlPressed]) {
            verify(Appearance.contrast(Theme.text, surface) >= 7, `text on ${surface}`);
            verify(Appearance.contrast(Theme.red, surface) >= 4.5, `red on ${surface}`);
        }
        for (const surface of [Theme.window, Theme.tile, Theme.orangeTile])
            verify(Appearance.contrast(Theme.secondaryText, surface) >= 4.5,
                   `secondary text on ${surface}`);
        verify(Appearance.contrast(Theme.orangeText, Theme.orangeTile) >= 4.5);
        verify(Appearance.contrast(Theme.green, Theme.tile) >= 4.5);
    }

    function test_symbolsCanBeSeenOnATile_data() {
        return [{tag: "light", dark: false}, {tag: "dark", dark: true}];
    }

    function test_symbolsCanBeSeenOnATile(row) {
        FakeDesktop.look(row.dark, "#308cc6");
        for (const tint of [Theme.accent, Theme.orange, Theme.pink, Theme.green])
            verify(Appearance.contrast(tint, Theme.tile) >= 3, `${tint}`);
    }
}
