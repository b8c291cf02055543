// SPDX-License-Identifier: MIT
import QtQuick
import Clavo.Controls

// A text in the desktop's font. Not T.Label, whose accessible role cannot be changed.
Text {
    color: enabled ? Theme.text : Theme.disabledText
    linkColor: Theme.accent
    font.pixelSize: Theme.bodySize
}
