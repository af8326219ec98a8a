pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// A verdict level as a capsule: the level's icon and label in its colour, on the same
// colour at 15 % opacity.
Rectangle {
    id: root

    // A level raw value: "ok", "attention", "alerte", "info" or "nonApplicable".
    required property string status

    readonly property RoleColour tone: RoleColour {
        role: Presentation.levelColourRole(root.status)
    }

    implicitWidth: content.implicitWidth + 18
    implicitHeight: content.implicitHeight + 8
    radius: height / 2
    color: Theme.faded(root.tone.value, 0.15)

    Row {
        id: content

        anchors.centerIn: parent
        spacing: 5

        SymbolImage {
            objectName: "pillIcon"
            anchors.verticalCenter: parent.verticalCenter
            name: Presentation.levelSymbol(root.status)
            color: root.tone.value
            size: 10
        }
        Label {
            objectName: "pillLabel"
            text: Presentation.levelLabel(root.status)
            color: root.tone.value
            font.pixelSize: Theme.caption2
            font.weight: Font.Medium
        }
    }
}
