pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// A labelled figure: the label in small capitals over the value in the block's tint,
// on one line, shrinking down to 60 % of its size before it is cut. The value can be selected.
Column {
    id: root

    required property string label
    required property string value
    property color tint: Theme.primary

    readonly property int valuePixelSize: 15
    // The width that shows label and value whole, for rows that share their width by content.
    readonly property real naturalWidth: Math.ceil(Math.max(labelMetrics.advanceWidth, valueMetrics.advanceWidth))
    // The value's size: its full size when it fits, else smaller, down to 60 %.
    readonly property real fittedPixelSize: {
        const natural = valueMetrics.advanceWidth
        if (natural <= 0 || natural <= root.width)
            return root.valuePixelSize
        return Math.max(root.valuePixelSize * 0.6, root.valuePixelSize * root.width / natural)
    }

    spacing: 3

    TextMetrics {
        id: labelMetrics

        font: statLabel.font
        text: statLabel.text
    }
    TextMetrics {
        id: valueMetrics

        font.pixelSize: root.valuePixelSize
        font.weight: Font.DemiBold
        text: root.value
    }

    Label {
        id: statLabel

        objectName: "statLabel"
        width: root.width
        text: Presentation.upperCased(root.label)
        color: Theme.secondary
        font.pixelSize: 9
        font.weight: Font.DemiBold
        font.letterSpacing: 0.6
        elide: Text.ElideRight
    }
    TextInput {
        objectName: "statValue"
        width: root.width
        text: root.value
        readOnly: true
        selectByMouse: true
        clip: true
        color: root.tint
        selectionColor: Theme.accent
        selectedTextColor: Theme.onAccent
        font.pixelSize: root.fittedPixelSize
        font.weight: Font.DemiBold
    }
}
