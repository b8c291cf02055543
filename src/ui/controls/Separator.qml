// SPDX-License-Identifier: MIT
import QtQuick
import Clavo.Controls

Rectangle {
    implicitWidth: 1
    implicitHeight: 1
    color: Theme.separator
    Accessible.role: Accessible.Separator
}
