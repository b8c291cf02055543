// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T
import Clavo.Controls

// An on/off switch to the right of its text. A click on either toggles it. Without a text it needs
// an Accessible.name.
T.Switch {
    id: root

    // Like the space key, which does not repeat either.
    function turn(event: KeyEvent) {
        if (event.isAutoRepeat)
            return;
        toggle();
        toggled();
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(implicitContentHeight, implicitIndicatorHeight) + topPadding + bottomPadding
    rightPadding: indicator.width + (text ? Theme.spacing : 0)
    font.pixelSize: Theme.bodySize
    hoverEnabled: true
    Keys.onReturnPressed: event => turn(event)
    Keys.onEnterPressed: event => turn(event)
    Accessible.name: text

    indicator: Rectangle {
        implicitWidth: 34
        implicitHeight: 20
        x: root.width - width
        y: (root.height - height) / 2
        radius: height / 2
        color: root.checked ? Theme.accent : Theme.track
        opacity: root.enabled ? 1 : 0.5

        FocusRing {
            around: parent.radius
            visible: root.visualFocus
        }

        Rectangle {
            readonly property real margin: 2

            width: root.down ? 18 : 16
            height: 16
            x: margin + root.visualPosition * (parent.width - width - 2 * margin)
            y: margin
            radius: height / 2
            color: "white"
            border.color: Theme.knobBorder

            Behavior on x {
                enabled: !root.down
                NumberAnimation {
                    duration: Theme.transition
                }
            }
        }
    }

    contentItem: Label {
        text: root.text
        font: root.font
        wrapMode: Text.Wrap
        verticalAlignment: Text.AlignVCenter
        enabled: root.enabled
        Accessible.ignored: true
    }
}
