pragma ComponentBehavior: Bound
import QtQuick
import Quillon

// The prominent card of the overview: a Card whose symbol is always present, with more
// room under the header, larger corners and a smaller accessory text.
Card {
    id: root

    required title
    required property string symbol

    systemImage: root.symbol
    headerSpacing: 15
    radius: 16
    accessoryPixelSize: Theme.caption
}
