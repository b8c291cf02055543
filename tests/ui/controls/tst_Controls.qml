// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Clavo.Controls
import Clavo.Test

TestCase {
    id: test

    name: "Controls"
    width: 400
    height: 400
    visible: true
    when: windowShown

    // Every control is reached by Tab, shows its focus, and has a role and a name.
    function verifyReachable(control: Item, role: int, name: string) {
        test.forceActiveFocus();
        keyClick(Qt.Key_Tab);
        verify(control.activeFocus);
        FakeDesktop.startAssistiveTechnology();
        compare(control.Accessible.role, role);
        compare(control.Accessible.name, name);
    }

    function ringOf(item: Item): Item {
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i];
            const ring = child instanceof FocusRing ? child : ringOf(child);
            if (ring)
                return ring;
        }
        return null;
    }

    function verifyRing(control: Item) {
        const ring = ringOf(control);
        test.forceActiveFocus();
        verify(!ring.visible);
        control.forceActiveFocus(Qt.TabFocusReason);
        verify(ring.visible);
        test.forceActiveFocus();
        control.forceActiveFocus(Qt.MouseFocusReason);
        verify(!ring.visible);
    }

    function rowsIn(item) {
        const found = [];
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i];
            found.push(...(child instanceof FormRow ? [child] : rowsIn(child)));
        }
        return found;
    }

    function separatorsIn(item) {
        const found = [];
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i];
            found.push(...(child instanceof Separator ? [child] : separatorsIn(child)));
        }
        return found;
    }

    Component {
        id: aSpy

        SignalSpy {}
    }

    function spyOn(target: QtObject, signalName: string): SignalSpy {
        return createTemporaryObject(aSpy, test, {target: target, signalName: signalName});
    }

    Component {
        id: aSwitch

        Switch {
            width: 200
            text: "Mouse clicks"
        }
    }

    Component {
        id: aSlider

        Slider {
            value: 0.5
            Accessible.name: "Volume"
        }
    }

    Component {
        id: aButton

        Button {
            text: "Refresh"
        }
    }

    Component {
        id: aComboBox

        ComboBox {
            y: 150
            model: ["System", "English", "Français", "Deutsch"]
            Accessible.name: "Language"
        }
    }

    Component {
        id: tabs

        TabBar {
            TabButton {
                text: "General"
                symbol: "gearshape"
            }
            TabButton {
                text: "Statistics"
                symbol: "chart.bar.xaxis"
            }
            TabButton {
                text: "About"
                symbol: "info.circle"
            }
        }
    }

    Component {
        id: section

        FormSection {
            title: "Permission"

            FormRow {
                label: "First"
            }
            FormRow {
                label: "Second"
            }
        }
    }

    Component {
        id: buttonRow

        FormRow {
            label: "Permission"

            Button {
                text: "Grant…"
            }
        }
    }

    Component {
        id: confirmation

        ConfirmationDialog {
            title: "Erase all statistics?"
            action: "Erase"
        }
    }

    function test_switch() {
        const control = createTemporaryObject(aSwitch, test) as Switch;
        const spy = spyOn(control, "toggled");
        verifyReachable(control, Accessible.CheckBox, "Mouse clicks");
        keyClick(Qt.Key_Return);
        keyClick(Qt.Key_Enter);
        verify(!control.checked);
        keyClick(Qt.Key_Space);
        verify(control.checked);
        compare(spy.count, 3);
        mouseClick(control, 5, control.height / 2);
        verify(!control.checked);
        verifyRing(control);
    }

    function test_aSwitchsLongTextWraps() {
        const control = createTemporaryObject(aSwitch, test, {
            text: "Spatial sound that comes from where the key is, left or right",
            width: 150
        }) as Switch;
        verify(control.implicitHeight > 40);
        verify(control.contentItem.width + control.indicator.width < control.width);
    }

    function test_slider() {
        const control = createTemporaryObject(aSlider, test) as Slider;
        verifyReachable(control, Accessible.Slider, "Volume");
        keyClick(Qt.Key_Right);
        fuzzyCompare(control.value, 0.55, 1e-6);
        keyClick(Qt.Key_Left);
        keyClick(Qt.Key_Left);
        fuzzyCompare(control.value, 0.45, 1e-6);
        mouseClick(control, control.width - 1, control.height / 2);
        compare(control.value, 1);
        verifyRing(control);
    }

    function test_button() {
        const control = createTemporaryObject(aButton, test) as Button;
        const spy = spyOn(control, "clicked");
        verifyReachable(control, Accessible.Button, "Refresh");
        keyClick(Qt.Key_Return);
        keyClick(Qt.Key_Enter);
        keyClick(Qt.Key_Space);
        mouseClick(control);
        compare(spy.count, 4);
        verifyRing(control);
    }

    function test_aButtonsLongTextIsElidedInside() {
        const control = createTemporaryObject(aButton, test, {
            text: "Eingabeüberwachung öffnen",
            width: 90
        }) as Button;
        verify(control.implicitWidth > 90);
        verify(control.contentItem.width <= 90 - control.leftPadding - control.rightPadding);
    }

    function test_comboBox() {
        const control = createTemporaryObject(aComboBox, test) as ComboBox;
        const spy = spyOn(control, "activated");
        verifyReachable(control, Accessible.ComboBox, "Language");
        keyClick(Qt.Key_Space);
        tryCompare(control.popup, "opened", true);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        tryCompare(control.popup, "visible", false);
        compare(control.currentIndex, 2);
        compare(spy.count, 1);

        keyClick(Qt.Key_Space);
        tryCompare(control.popup, "opened", true);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Escape);
        tryCompare(control.popup, "visible", false);
        compare(control.displayText, "Français");
        verifyRing(control);
    }

    function test_returnOpensAComboBoxToo_data() {
        return [{tag: "return", key: Qt.Key_Return}, {tag: "enter", key: Qt.Key_Enter}];
    }

    function test_returnOpensAComboBoxToo(row) {
        const control = createTemporaryObject(aComboBox, test) as ComboBox;
        control.forceActiveFocus(Qt.TabFocusReason);
        keyClick(row.key);
        tryCompare(control.popup, "opened", true);
        keyClick(Qt.Key_Down);
        keyClick(row.key);
        tryCompare(control.popup, "visible", false);
        compare(control.currentIndex, 1);
        keyClick(row.key);
        tryCompare(control.popup, "opened", true);
    }

    function test_comboBoxHasRoomForItsLongestText() {
        const narrow = createTemporaryObject(aComboBox, test) as ComboBox;
        const wide = createTemporaryObject(aComboBox, test, {
            model: ["A", "Bevorzugte Sprache des Systems"]
        }) as ComboBox;
        verify(wide.implicitWidth > narrow.implicitWidth);
    }

    function test_arrowsTurnToTheNextTab() {
        const bar = createTemporaryObject(tabs, test) as TabBar;
        const first = bar.itemAt(0);
        verifyReachable(first, Accessible.PageTab, "General");
        keyClick(Qt.Key_Right);
        compare(bar.currentIndex, 1);
        verify(bar.itemAt(1).visualFocus);
        keyClick(Qt.Key_Right);
        keyClick(Qt.Key_Right);
        compare(bar.currentIndex, 2);
        keyClick(Qt.Key_Left);
        compare(bar.currentIndex, 1);
    }

    function test_tabReachesTheChosenTabAlone() {
        const bar = createTemporaryObject(tabs, test, {currentIndex: 1}) as TabBar;
        const next = createTemporaryObject(aButton, test) as Button;
        verifyReachable(bar.itemAt(1), Accessible.PageTab, "Statistics");
        keyClick(Qt.Key_Tab);
        verify(next.activeFocus);
    }

    function test_noTabMovesWhenAnotherIsChosen() {
        const bar = createTemporaryObject(tabs, test) as TabBar;
        bar.itemAt(0).text = "Statistiques de la semaine";
        bar.itemAt(1).text = "Einstellungen der Woche";
        const width = bar.implicitWidth;
        const start = bar.itemAt(1).x;
        bar.currentIndex = 1;
        compare(bar.implicitWidth, width);
        compare(bar.itemAt(1).x, start);
    }

    function test_aRowIsAsHighWithAButton() {
        const form = createTemporaryObject(section, test) as FormSection;
        const button = createTemporaryObject(buttonRow, test) as FormRow;
        compare(button.implicitHeight, rowsIn(form)[0].implicitHeight);
    }

    function test_lineBetweenTheRowsOfASection() {
        const form = createTemporaryObject(section, test) as FormSection;
        compare(form.Accessible.name, "Permission");
        const lines = separatorsIn(form);
        compare(lines.length, 2);
        verify(!lines[0].visible);
        verify(lines[1].visible);
    }

    function test_confirmation_data() {
        return [
            {tag: "escape", keys: [Qt.Key_Escape], accepted: 0, rejected: 1},
            {tag: "return", keys: [Qt.Key_Return], accepted: 0, rejected: 1},
            {tag: "erase", keys: [Qt.Key_Tab, Qt.Key_Return], accepted: 1, rejected: 0}
        ];
    }

    function test_confirmation(row) {
        const dialog = createTemporaryObject(confirmation, test) as ConfirmationDialog;
        let accepted = 0;
        let rejected = 0;
        dialog.accepted.connect(() => ++accepted);
        dialog.rejected.connect(() => ++rejected);
        dialog.open();
        tryCompare(dialog, "opened", true);
        for (const key of row.keys)
            keyClick(key);
        tryCompare(dialog, "visible", false);
        compare(accepted, row.accepted);
        compare(rejected, row.rejected);
    }
}
