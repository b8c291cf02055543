// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T
import Clavo.Controls

// Scrolls content that does not fit. An item that gets the keyboard focus is scrolled into view.
Flickable {
    id: root

    function holds(item: Item): bool {
        let ancestor = item;
        while (ancestor && ancestor !== contentItem)
            ancestor = ancestor.parent;
        return ancestor === contentItem;
    }

    function show(item: Item) {
        if (!holds(item))
            return;
        const top = contentItem.mapFromItem(item, 0, 0).y - Theme.padding;
        const bottom = top + item.height + 2 * Theme.padding;
        const lowest = Math.max(contentHeight - height, 0);
        contentY = Math.min(Math.max(Math.min(contentY, top), bottom - height, 0), lowest);
    }

    boundsBehavior: Flickable.StopAtBounds
    interactive: contentHeight > height
    clip: interactive

    T.ScrollBar.vertical: ScrollBar {}

    Connections {
        target: root.Window

        function onActiveFocusItemChanged() {
            root.show(root.Window.activeFocusItem);
        }
    }
}
