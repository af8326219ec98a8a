pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// A labelled figure: the label in small capitals over the value in the block's tint. Both
// keep their size and go on to a second line rather than being cut or shrunk. The value can
// be selected.
Column {
    id: root

    required property string label
    required property string value
    property color tint: Theme.primary

    readonly property int valuePixelSize: 15
    // The width that shows label and value on one line each, for rows that share their width
    // by content.
    readonly property real naturalWidth: Math.ceil(Math.max(labelMetrics.advanceWidth, valueMetrics.advanceWidth))

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
        wrapMode: Text.Wrap
    }
    TextEdit {
        objectName: "statValue"
        width: root.width
        text: root.value
        readOnly: true
        selectByMouse: true
        wrapMode: TextEdit.WrapAtWordBoundaryOrAnywhere
        color: root.tint
        selectionColor: Theme.accent
        selectedTextColor: Theme.onAccent
        font.pixelSize: root.valuePixelSize
        font.weight: Font.DemiBold
    }
}
