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
    Accessible.name: root.text
    contentItem: Label {
        text: root.text
        color: Theme.accent
        font.pixelSize: root.pixelSize
        font.underline: root.hovered
    }
    // No frame, but the focus ring when Tab reaches it.
    background: Rectangle {
        anchors.fill: parent
        anchors.margins: -3
        radius: 4
        color: "transparent"
        border.width: 3
        border.color: Theme.faded(Theme.accent, 0.55)
        visible: root.visualFocus
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
