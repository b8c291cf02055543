// SPDX-License-Identifier: MIT
import QtQuick.Templates as T
import Clavo.Controls

// The help text of its parent, shown while the pointer rests there.
T.ToolTip {
    id: root

    x: parent ? (parent.width - implicitWidth) / 2 : 0
    y: parent ? parent.height + 6 : 0
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    margins: 6
    horizontalPadding: 8
    verticalPadding: 5
    delay: 600
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent

    contentItem: Label {
        text: root.text
        font.pixelSize: Theme.captionSize
    }

    background: PopupSurface {}
}
