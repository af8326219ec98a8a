pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// A button drawn as a link: accent-coloured text, no frame.
AbstractButton {
    id: root

    property int pixelSize: Theme.body

    padding: 0
    hoverEnabled: true
    contentItem: Label {
        text: root.text
        color: Theme.accent
        font.pixelSize: root.pixelSize
        font.underline: root.hovered
    }
    background: null

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
