pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// The connection state of a device as a coloured capsule ("Connecté", "Non connecté",
// "À vérifier"); a neutral device has no badge and nothing is drawn.
Rectangle {
    id: root

    // A device status raw value: "connected", "disconnected", "warning" or "neutral".
    required property string status

    readonly property string label: Presentation.badgeLabel(root.status)
    readonly property string toneRole: Presentation.badgeColourRole(root.status)
    readonly property color tone: root.toneRole === "green" ? Theme.green
                                : root.toneRole === "orange" ? Theme.orange
                                : Theme.secondary

    visible: root.label.length > 0
    implicitWidth: text.implicitWidth + 16
    implicitHeight: text.implicitHeight + 6
    radius: height / 2
    color: Theme.faded(root.tone, 0.15)

    Label {
        id: text

        anchors.centerIn: parent
        text: root.label
        color: root.tone
        font.pixelSize: Theme.caption2
        font.weight: Font.Medium
    }
}
