// SPDX-License-Identifier: MIT
import QtQuick
import Clavo
import Clavo.Controls
import Clavo.Presentation

// The panel below the menu bar.
Slide {
    id: root

    title: qsTr("Your keyboard, now satisfying.")
    subtitle: qsTr("Real mechanical keyboard sounds for every key, right from your menu bar.")
    aside: true
    textWidth: 640
    shift: 74

    AppIcon {
        x: 98
        y: root.textTop - height - 26
        size: 112
    }
    MenuBarStrip {
        id: strip
        width: root.width
    }

    WindowSurface {
        x: Math.min(strip.iconCenter - width * scale / 2, root.width - 60 - width * scale)
        y: strip.height + 12
        width: view.implicitWidth
        height: view.implicitHeight
        transformOrigin: Item.TopLeft
        scale: Math.min(1.3, (root.height - y - 48) / height)

        MenuView {
            id: view
            anchors.fill: parent
            appState: root.appState
            stats: root.appState.stats
        }
    }
}
