// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T
import Clavo.Controls

// A tab's symbol above its title.
T.TabButton {
    id: root

    required property string symbol
    readonly property color foreground: checked ? Theme.accentText : Theme.secondaryText

    // As wide as when checked, so that the tabs do not move.
    implicitWidth: Math.max(Math.ceil(widest.advanceWidth) + leftPadding + rightPadding, 84)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 12
    verticalPadding: 6
    hoverEnabled: true
    focusPolicy: checked ? Qt.StrongFocus : Qt.ClickFocus
    font.pixelSize: Theme.captionSize
    font.weight: checked ? Font.DemiBold : Font.Normal
    Accessible.name: text

    TextMetrics {
        id: widest
        text: root.text
        font.family: root.font.family
        font.pixelSize: root.font.pixelSize
        font.weight: Font.DemiBold
    }

    background: Rectangle {
        radius: Theme.rowRadius
        color: root.checked || root.hovered ? Theme.hover : "transparent"

        FocusRing {
            anchors.margins: 0
            around: parent.radius - border.width - 1
            visible: root.visualFocus
        }
    }

    contentItem: Column {
        spacing: 3

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: root.symbol
            size: 20
            color: root.foreground
        }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.text
            font: root.font
            color: root.checked ? Theme.text : Theme.secondaryText
            Accessible.ignored: true
        }
    }
}
