// SPDX-License-Identifier: MIT
import QtQuick
import Clavo.Controls

// The ring around what has the keyboard's focus, just outside of its parent.
Rectangle {
    id: root

    // The radius of what it surrounds.
    property real around: Theme.controlRadius

    anchors.fill: parent
    anchors.margins: -border.width - 1
    border.width: Theme.focusRingWidth
    border.color: Theme.accent
    color: "transparent"
    radius: around + border.width + 1
}
