// SPDX-License-Identifier: MIT
import QtQml
import QtTest
import Clavo.Controls

TestCase {
    id: test

    name: "Symbol"
    width: 100
    height: 100
    visible: true
    when: windowShown

    Component {
        id: keyboard

        Symbol {
            name: "keyboard.fill"
            color: "#ff0000"
            size: 34
        }
    }

    function test_isDrawnInItsColour() {
        const symbol = createTemporaryObject(keyboard, test) as Symbol;
        const picture = grabImage(symbol);
        compare(picture.width, 34);
        compare(picture.pixel(4, 17), "#ff0000");
    }

    function test_followsItsColour() {
        const symbol = createTemporaryObject(keyboard, test) as Symbol;
        symbol.color = "#0000ff";
        compare(grabImage(symbol).pixel(4, 17), "#0000ff");
    }

    function test_takesTheSizeItIsGiven() {
        const symbol = createTemporaryObject(keyboard, test) as Symbol;
        symbol.size = 11;
        compare(symbol.width, 11);
        compare(symbol.height, 11);
    }

    function test_everySymbolIsThere_data() {
        const rows = [];
        for (const name of ["battery.75percent", "chart.bar.xaxis", "checkmark", "checkmark.circle.fill",
                "checkmark.seal.fill", "chevron.up.chevron.down", "circle", "flame.fill", "gearshape",
                "info.circle", "key.fill", "keyboard", "keyboard.fill", "lock.shield.fill",
                "magnifyingglass", "speaker.fill", "speaker.slash.fill", "speaker.wave.2.fill",
                "speaker.wave.3.fill", "speedometer", "waveform", "wifi"])
            rows.push({tag: name});
        return rows;
    }

    function test_everySymbolIsThere(row) {
        const symbol = createTemporaryObject(keyboard, test, {name: row.tag}) as Symbol;
        verify(symbol.valid);
        const picture = grabImage(symbol);
        let drawn = 0;
        for (let x = 0; x < picture.width; ++x) {
            for (let y = 0; y < picture.height; ++y)
                drawn += picture.red(x, y) > 200 && picture.green(x, y) < 50 ? 1 : 0;
        }
        verify(drawn > 50, `${drawn} pixels`);
    }

    function test_anUnknownNameDrawsNothing() {
        const symbol = createTemporaryObject(keyboard, test, {name: "unknown"}) as Symbol;
        verify(!symbol.valid);
        compare(grabImage(symbol).pixel(4, 17), "#ffffff");
    }
}
