pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// One device of a device section: its symbol, name and subtitle with its status badge, then,
// when it has any, its rows under a divider. Its children are cards of their own.
Rectangle {
    id: root

    // {name, subtitle ("" when none), symbol, status, rows}.
    required property var node

    readonly property bool hasRows: root.node.rows.length > 0

    implicitWidth: layout.implicitWidth + 32
    implicitHeight: layout.implicitHeight + 32
    radius: 14
    color: Theme.cardSurface
    border.width: 1
    border.color: Theme.hairline

    ColumnLayout {
        id: layout

        x: 16
        y: 16
        width: root.width - 32
        spacing: 12

        RowLayout {
            spacing: 8
            Layout.fillWidth: true

            Item {
                implicitWidth: 22
                implicitHeight: 22

                SymbolImage {
                    objectName: "deviceSymbol"
                    anchors.centerIn: parent
                    name: root.node.symbol
                    color: Theme.accent
                    size: 17
                }
            }
            ColumnLayout {
                spacing: 2
                Layout.fillWidth: true

                Label {
                    objectName: "deviceName"
                    text: root.node.name
                    color: Theme.primary
                    font.pixelSize: Theme.headline
                    font.weight: Font.DemiBold
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Label {
                    objectName: "deviceSubtitle"
                    visible: root.node.subtitle.length > 0
                    text: root.node.subtitle
                    color: Theme.secondary
                    font.pixelSize: Theme.caption
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
            }
            StatusBadge {
                objectName: "deviceBadge"
                status: root.node.status
            }
        }
        Divider {
            objectName: "deviceDivider"
            visible: root.hasRows
            Layout.fillWidth: true
        }
        InfoRowsView {
            objectName: "deviceRows"
            visible: root.hasRows
            rows: root.node.rows
            Layout.fillWidth: true
        }
    }
}
