// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Clavo.Controls

// A picker of one text among several. It needs an Accessible.name.
T.ComboBox {
    id: root

    property bool returnOpens: false

    function isReturn(event: KeyEvent): bool {
        return event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
    }

    // A row that is destroyed together with the hidden list is announced to assistive technology as
    // shown while it is half destroyed, which crashes (Qt 6.4). So the rows go before.
    Component.onDestruction: (popup.contentItem as ListView).model = null

    implicitWidth: Math.max(implicitContentWidth + leftPadding + rightPadding, 120)
    implicitHeight: 28
    implicitContentWidthPolicy: T.ComboBox.WidestText
    leftPadding: 12
    rightPadding: 30
    font.pixelSize: Theme.bodySize
    hoverEnabled: true
    // As the space key does. It opens when the key is let go, which would close an open one.
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

    // No label: the box asks a text field how wide its texts are.
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
        // The chosen text lies over the one in the box.
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
