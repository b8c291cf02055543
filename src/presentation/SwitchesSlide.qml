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

    // The colour of a category, given by its name in a manifest.
    function tint(category: string): color {
        switch (category) {
        case "linear":
            return Qt.rgba(0.36, 0.62, 1, 1);
        case "tactile":
            return Qt.rgba(1, 0.6, 0.2, 1);
        case "clicky":
            return Qt.rgba(0.3, 0.85, 0.75, 1);
        default:
            return Qt.rgba(0.75, 0.5, 1, 1);
        }
    }

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
                tint: root.tint(category)
            }
        }
    }
}
