// SPDX-License-Identifier: MIT
import QtQuick
import Clavo.Controls

// The rounded background of things that belong together.
Rectangle {
    color: Theme.tile
    border.color: Theme.tileBorder
    radius: Theme.tileRadius
}
