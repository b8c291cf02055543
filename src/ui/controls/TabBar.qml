// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T
import Clavo.Controls

// Tab reaches the chosen one alone, from which the arrows turn to the others.
T.TabBar {
    id: root

    function turnBy(tabs: int) {
        currentIndex = Math.min(Math.max(currentIndex + tabs, 0), count - 1);
        const tab = currentItem as TabButton;
        tab.forceActiveFocus();
        tab.focusReason = Qt.TabFocusReason; // The bar may have given it the focus already.
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
