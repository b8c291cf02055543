// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T
import Clavo.Controls

// A vertical scroll bar, wider under the pointer, hidden if everything fits.
T.ScrollBar {
    id: root

    implicitWidth: 10
    visible: size < 1
    minimumSize: 0.1
    hoverEnabled: true

    contentItem: Item {
        Rectangle {
            anchors.right: parent.right
            anchors.rightMargin: 2
            width: root.hovered || root.pressed ? 6 : 4
            height: parent.height
            radius: width / 2
            color: root.pressed ? Theme.secondaryText : Theme.disabledText
            opacity: root.hovered || root.pressed ? 1 : 0.7
        }
    }
}
