// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Clavo.Controls

// Selects one of several texts. Needs an Accessible.name.
T.ComboBox {
    id: root

    property bool returnOpens: false

    function isReturn(event: KeyEvent): bool {
        return event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
    }

    // Destroys the rows before the list. Otherwise Qt 6.4 reports half-destroyed rows of the hidden
    // list to assistive technology as shown, and crashes.
    Component.onDestruction: (popup.contentItem as ListView).model = null

    implicitWidth: Math.max(implicitContentWidth + leftPadding + rightPadding, 120)
    implicitHeight: 28
    implicitContentWidthPolicy: T.ComboBox.WidestText
    leftPadding: 12
    rightPadding: 30
    font.pixelSize: Theme.bodySize
    hoverEnabled: true
    // Like the space key. The popup opens on release; a release would close a popup that opened on
    // the press.
    Keys.onPressed: event => {
        if (isReturn(event) && !event.isAutoRepeat)
            returnOpens = !popup.visible;
    }
    Keys.onReleased: event => {
        if (!isReturn(event) || event.isAutoRepeat || !returnOpens)
            return;
        returnOpens = false;
        popup.open();
        event.accepted = true;
    }

    delegate: T.ItemDelegate {
        id: choice

        required property int index

        width: ListView.view.width
        implicitHeight: 28
        leftPadding: 28
        rightPadding: 12
        text: root.textAt(index)
        font: root.font
        highlighted: root.highlightedIndex === index

        background: Rectangle {
            radius: Theme.barRadius
            color: choice.highlighted ? Theme.accent : "transparent"
        }

        contentItem: Label {
            text: choice.text
            font: choice.font
            color: choice.highlighted ? Theme.textOnAccent : Theme.text
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
            Accessible.ignored: true
        }

        Symbol {
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            name: "checkmark"
            size: 14
            color: choice.highlighted ? Theme.textOnAccent : Theme.text
            visible: root.currentIndex === choice.index
        }
    }

    indicator: Symbol {
        x: root.width - width - 9
        y: (root.height - height) / 2
        name: "chevron.up.chevron.down"
        size: 14
        color: root.enabled ? Theme.secondaryText : Theme.disabledText
    }

    // Not a Label: the ComboBox measures its texts only with a text field.
    contentItem: T.TextField {
        text: root.displayText
        color: root.enabled ? Theme.text : Theme.disabledText
        verticalAlignment: Text.AlignVCenter
        enabled: false
        readOnly: true
        Accessible.ignored: true
    }

    background: Rectangle {
        radius: Theme.controlRadius
        color: root.down ? Theme.controlPressed : root.hovered ? Theme.controlHovered : Theme.control
        border.color: Theme.controlBorder
        opacity: root.enabled ? 1 : 0.6

        FocusRing {
            visible: root.visualFocus
        }
    }

    popup: T.Popup {
        // The selected row covers the text in the box.
        x: -21
        y: -padding - Math.max(root.currentIndex, 0) * 28
        width: root.width - x
        implicitHeight: contentItem.implicitHeight + 2 * padding
        padding: 5
        margins: 6

        contentItem: ListView {
            implicitHeight: contentHeight
            clip: true
            model: root.delegateModel
            currentIndex: root.highlightedIndex
            highlightMoveDuration: 0
            boundsBehavior: Flickable.StopAtBounds
        }

        background: PopupSurface {}
    }
}
