// SPDX-License-Identifier: MIT
import QtQml
import QtTest
import Clavo.Controls

TestCase {
    id: test

    name: "GradientBar"
    width: 100
    height: 100
    visible: true
    when: windowShown

    Component {
        id: aBar

        GradientBar {
            width: 20
            height: 80
            radius: 4
            topColor: "#ff0000"
            bottomColor: "#0000ff"
        }
    }

    function test_goesFromOneColourToTheOther() {
        const picture = grabImage(createTemporaryObject(aBar, test) as GradientBar);
        verify(picture.red(10, 1) > 245);
        fuzzyCompare(picture.red(10, 40), 127, 5);
        verify(picture.blue(10, 78) > 245);
    }

    function test_itsCornersAreRoundAndSmooth() {
        const picture = grabImage(createTemporaryObject(aBar, test) as GradientBar);
        verify(picture.green(0, 0) > 200);
        const edge = picture.green(0, 2);
        verify(edge > 20 && edge < 235, `${edge}`);
        verify(picture.green(4, 4) < 20);
    }

    function test_followsItsColours() {
        const bar = createTemporaryObject(aBar, test) as GradientBar;
        grabImage(bar);
        bar.topColor = "#00ff00";
        verify(grabImage(bar).green(10, 1) > 245);
    }
}
