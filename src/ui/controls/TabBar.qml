// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T
import Clavo.Controls

T.TabBar {
    id: root

    implicitWidth: contentWidth + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    spacing: 4
    Keys.onLeftPressed: decrementCurrentIndex()
    Keys.onRightPressed: incrementCurrentIndex()

    contentItem: ListView {
        model: root.contentModel
        currentIndex: root.currentIndex
        spacing: root.spacing
        orientation: ListView.Horizontal
        interactive: false
        highlightMoveDuration: 0
    }
}
