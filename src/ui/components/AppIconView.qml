pragma ComponentBehavior: Bound
import QtQuick
import Quillon

// The application icon. Quillon has no icon image of its own on this platform, so the
// fallback tile is drawn: a rounded square of the accent colour at 25 % opacity carrying
// the laptop symbol in the tint colour, over a soft black shadow.
Item {
    id: root

    // Opacity of the shadow under the tile; 0 for none.
    property real shadowOpacity: 0

    implicitWidth: 30
    implicitHeight: 30

    // A soft shadow made of a few widening, fading outlines below the tile.
    Repeater {
        model: root.shadowOpacity > 0 ? 3 : 0

        delegate: Rectangle {
            required property int index

            x: -index
            y: 1 - index + 1
            width: root.width + 2 * index
            height: root.height + 2 * index
            radius: 6 + index
            color: Qt.rgba(0, 0, 0, root.shadowOpacity / (index + 2))
        }
    }
    Rectangle {
        objectName: "iconTile"
        anchors.fill: parent
        radius: 6
        // The tile is opaque so that the shadow does not show through it.
        color: Theme.cardSurface

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: Theme.faded(Theme.accent, 0.25)
        }
        SymbolImage {
            anchors.centerIn: parent
            name: "laptopcomputer"
            color: Theme.accent
            size: Math.round(root.width * 0.62)
        }
    }
}
