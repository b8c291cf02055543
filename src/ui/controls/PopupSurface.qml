// SPDX-License-Identifier: MIT
import QtQuick
import Clavo.Controls

// The background of a popup, with its shadow.
Item {
    Repeater {
        model: 5

        Rectangle {
            required property int index

            anchors.fill: parent
            anchors.margins: -index
            anchors.topMargin: 1 - index
            anchors.bottomMargin: -index - 2
            radius: Theme.rowRadius + index
            color: Theme.shadow
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.rowRadius
        color: Theme.popup
        border.color: Theme.popupBorder
    }
}
