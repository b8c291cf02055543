// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T
import Clavo.Controls

// A horizontal slider. Needs an Accessible.name.
T.Slider {
    id: root

    implicitWidth: 160
    implicitHeight: 20
    stepSize: 0.05
    snapMode: T.Slider.NoSnap
    wheelEnabled: true

    background: Rectangle {
        y: (root.height - height) / 2
        width: root.width
        height: 4
        radius: height / 2
        color: Theme.track
        opacity: root.enabled ? 1 : 0.5

        Rectangle {
            x: root.mirrored ? parent.width - width : 0
            width: root.handle.width / 2 + root.position * (parent.width - root.handle.width)
            height: parent.height
            radius: height / 2
            color: Theme.accent
        }
    }

    handle: Rectangle {
        x: root.visualPosition * (root.width - width)
        y: (root.height - height) / 2
        width: 16
        height: 16
        radius: height / 2
        color: root.pressed ? "#f0f0f2" : "white"
        border.color: Theme.knobBorder

        FocusRing {
            around: parent.radius
            visible: root.visualFocus
        }
    }
}
