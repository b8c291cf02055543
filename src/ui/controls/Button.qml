// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Clavo.Controls

T.Button {
    id: root

    // The name of a symbol before the text; empty for none.
    property string symbol
    // The action cannot be undone.
    property bool destructive: false
    readonly property color foreground: !enabled ? Theme.disabledText
                                        : highlighted ? (destructive ? Theme.textOnRed : Theme.textOnAccent)
                                        : destructive ? Theme.red : Theme.text

    // Like the space key, which does not repeat either.
    function press(event: KeyEvent) {
        if (!event.isAutoRepeat)
            clicked();
    }

    implicitWidth: Math.max(implicitContentWidth + leftPadding + rightPadding, 64)
    implicitHeight: 28
    horizontalPadding: 12
    font.pixelSize: Theme.bodySize
    hoverEnabled: true
    Keys.onReturnPressed: event => root.press(event)
    Keys.onEnterPressed: event => root.press(event)
    Accessible.name: text

    background: Rectangle {
        readonly property color emphasis: root.destructive ? Theme.redSurface : Theme.accent

        radius: Theme.controlRadius
        color: root.highlighted ? (root.down ? Qt.darker(emphasis, 1.15)
                                   : root.hovered ? Qt.darker(emphasis, 1.06) : emphasis)
               : root.down ? Theme.controlPressed
               : root.hovered ? Theme.controlHovered : Theme.control
        border.width: root.highlighted ? 0 : 1
        border.color: Theme.controlBorder
        opacity: root.enabled ? 1 : 0.6

        FocusRing {
            visible: root.visualFocus
        }
    }

    contentItem: RowLayout {
        spacing: 0

        Item {
            Layout.fillWidth: true
        }

        Symbol {
            name: root.symbol
            size: 14
            color: root.foreground
            visible: root.symbol
            Layout.rightMargin: 6
        }

        Label {
            text: root.text
            font: root.font
            color: root.foreground
            elide: Text.ElideRight
            Layout.fillWidth: true
            Layout.maximumWidth: Math.ceil(implicitWidth)
            Accessible.ignored: true
        }

        Item {
            Layout.fillWidth: true
        }
    }
}
