// SPDX-License-Identifier: MIT
import QtQuick

// The application's icon.
Image {
    id: root

    property int size: 34

    sourceSize.width: size
    sourceSize.height: size
    source: size > 32 ? "qrc:/clavo/icons/clavo.svg" : "qrc:/clavo/icons/clavo-small.svg"
    Accessible.ignored: true
}
