// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Clavo
import Clavo.Presentation

// All packs as cards.
Slide {
    id: root

    title: qsTr("8 real switches, recorded key by key.")
    subtitle: qsTr("Linear, tactile, clicky or Topre. Hover to hear, click to switch.")

    PackListModel {
        id: packs
        appState: root.appState
    }

    Grid {
        id: grid

        readonly property int lines: packs.count <= 3 ? 1 : packs.count <= 10 ? 2 : packs.count <= 18 ? 3 : 4
        readonly property real cardWidth: 288
        readonly property real cardHeight: 232

        anchors.horizontalCenter: parent.horizontalCenter
        y: 262 + (root.height - 262 - 84 - height * scale) / 2
        transformOrigin: Item.Top
        scale: Math.min(1, 1240 / width, (root.height - 262 - 84) / height)
        columns: Math.ceil(packs.count / lines)
        spacing: 28

        Repeater {
            model: packs

            PackCard {
                required property string category

                objectName: "card"
                width: grid.cardWidth
                height: grid.cardHeight
                tint: PackTint.tint(category)
            }
        }
    }
}
