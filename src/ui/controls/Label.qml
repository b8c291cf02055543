// SPDX-License-Identifier: MIT
import QtQuick
import Clavo.Controls

// A text in the desktop's font. The template's label would keep its role from being another one.
Text {
    color: enabled ? Theme.text : Theme.disabledText
    linkColor: Theme.accent
    font.pixelSize: Theme.bodySize
}
