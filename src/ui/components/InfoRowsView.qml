pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// Label/value rows in two columns, 20 points apart, 9 points between rows: the labels in
// the secondary colour, the values taking the remaining width. Values can be selected and
// copied; labels cannot.
Item {
    id: root

    // A list of {label, value} maps, in display order.
    required property var rows

    readonly property real widestLabel: {
        let widest = 0
        for (let i = 0; i < root.rows.length; ++i)
            widest = Math.max(widest, metrics.advanceWidth(root.rows[i].label))
        return Math.ceil(widest) + 1
    }
    // Long labels wrap rather than leave the values no room.
    readonly property real labelWidth: Math.min(root.widestLabel, Math.max(90, root.width * 0.42))

    implicitWidth: root.widestLabel + 20 + 160
    implicitHeight: column.implicitHeight

    FontMetrics {
        id: metrics

        font.pixelSize: Theme.callout
    }

    Column {
        id: column

        width: root.width
        spacing: 9

        Repeater {
            model: root.rows

            delegate: Row {
                id: line

                required property var modelData

                spacing: 20
                width: column.width

                Label {
                    objectName: "rowLabel"
                    width: root.labelWidth
                    text: line.modelData.label
                    color: Theme.secondary
                    font.pixelSize: Theme.callout
                    wrapMode: Text.Wrap
                }
                TextEdit {
                    objectName: "rowValue"
                    width: Math.max(0, column.width - root.labelWidth - line.spacing)
                    text: line.modelData.value
                    textFormat: TextEdit.PlainText
                    readOnly: true
                    selectByMouse: true
                    wrapMode: TextEdit.Wrap
                    color: Theme.primary
                    selectionColor: Theme.accent
                    selectedTextColor: Theme.onAccent
                    font.pixelSize: Theme.callout
                }
            }
        }
    }
}
