// SPDX-License-Identifier: MIT
import QtQuick
import Clavo.Controls

// The ring around a control with the keyboard focus, just outside its parent.
Rectangle {
    id: root

    // The corner radius of the parent.
    property real around: Theme.controlRadius

    anchors.fill: parent
    anchors.margins: -border.width - 1
    border.width: Theme.focusRingWidth
    border.color: Theme.accent
    color: "transparent"
    radius: around + border.width + 1
}
