pragma ComponentBehavior: Bound
import QtQuick
import Quillon

// The device tree of a device section: one card per device, each device followed by its
// children, 12 points apart, indented 22 points per level.
Column {
    id: root

    // The section's cards (a DeviceListModel: the walk of the root nodes).
    required property var nodes

    spacing: 12

    Repeater {
        model: root.nodes

        delegate: Item {
            id: entry

            required property var node
            required property real indent

            width: root.width
            height: card.height

            DeviceCard {
                id: card

                x: entry.indent
                width: entry.width - entry.indent
                node: entry.node
            }
        }
    }
}
