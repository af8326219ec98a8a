pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// One built-in component of the hardware screen: its symbol (green when present), its
// title and state, and its rows indented under the title. A divider separates it from the
// entry above.
ColumnLayout {
    id: root

    // A map with "title", "symbol", "present", "stateText" and "rows".
    required property var entry
    property bool showsDivider: false

    spacing: 9

    Divider {
        visible: root.showsDivider
        Layout.fillWidth: true
    }
    RowLayout {
        spacing: 9
        Layout.fillWidth: true

        Item {
            implicitWidth: 18
            implicitHeight: 18

            SymbolImage {
                objectName: "componentSymbol"
                anchors.centerIn: parent
                name: root.entry.symbol
                color: root.entry.present ? Theme.green : Theme.secondary
                size: 15
            }
        }
        ColumnLayout {
            spacing: 1
            Layout.fillWidth: true

            Label {
                objectName: "componentTitle"
                text: root.entry.title
                color: Theme.primary
                font.pixelSize: Theme.subheadline
                font.weight: Font.Medium
                Layout.fillWidth: true
            }
            Label {
                objectName: "componentState"
                text: root.entry.stateText
                color: Theme.secondary
                font.pixelSize: Theme.caption
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
        }
    }
    InfoRowsView {
        visible: root.entry.rows.length > 0
        rows: root.entry.rows
        Layout.leftMargin: 27
        Layout.fillWidth: true
    }
}
