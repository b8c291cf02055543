// SPDX-License-Identifier: MIT
import QtQuick.Templates as T
import Clavo.Controls

T.Label {
    color: enabled ? Theme.text : Theme.disabledText
    linkColor: Theme.accent
    font.pixelSize: Theme.bodySize
}
