// SPDX-License-Identifier: MIT
import QtQuick
import Clavo.Controls

// The rounded background of a group.
Rectangle {
    color: Theme.tile
    border.color: Theme.tileBorder
    radius: Theme.tileRadius
}
