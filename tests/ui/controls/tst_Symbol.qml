// SPDX-License-Identifier: MIT
import QtQuick
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
}
