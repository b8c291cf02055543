// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T
import Clavo.Controls

// The Tab key reaches the selected tab only; the arrow keys select the others.
T.TabBar {
    id: root

    function turnBy(tabs: int) {
        currentIndex = Math.min(Math.max(currentIndex + tabs, 0), count - 1);
        const tab = currentItem as TabButton;
        tab.forceActiveFocus();
        tab.focusReason = Qt.TabFocusReason; // It may have the focus for another reason.
    }

    implicitWidth: contentWidth + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    spacing: 4
    Keys.onLeftPressed: turnBy(-1)
    Keys.onRightPressed: turnBy(1)

    contentItem: ListView {
        model: root.contentModel
        currentIndex: root.currentIndex
        spacing: root.spacing
        orientation: ListView.Horizontal
        interactive: false
        highlightMoveDuration: 0
    }
}
