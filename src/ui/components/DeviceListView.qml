pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// The device tree of a device section: one card per device, each device followed by its
// children, 12 points apart, indented 22 points per level. The list makes the cards on
// screen only and reuses them as it scrolls, so a bench of hundreds of devices opens at once.
ListView {
    id: root

    // The section's cards (a DeviceListModel: the walk of the root nodes).
    required property var nodes

    model: root.nodes
    spacing: 12
    topMargin: 22
    bottomMargin: 22
    leftMargin: 22
    rightMargin: 22
    clip: true
    reuseItems: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: Item {
        id: entry

        required property var node
        required property real indent

        width: root.width - root.leftMargin - root.rightMargin
        height: card.height

        DeviceCard {
            id: card

            x: entry.indent
            width: entry.width - entry.indent
            node: entry.node
        }
    }
}
