pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// A toolbar command: its symbol and label, replaced by a small progress indicator (and
// disabled) while its work runs.
ToolButton {
    id: root

    required property string symbol
    required property string tip
    property bool busy: false

    enabled: !root.busy
    hoverEnabled: true
    Accessible.name: root.text
    ToolTip.text: root.tip
    ToolTip.visible: root.hovered
    ToolTip.delay: 600

    contentItem: Item {
        implicitWidth: face.implicitWidth
        implicitHeight: face.implicitHeight

        RowLayout {
            id: face

            anchors.centerIn: parent
            spacing: 6
            visible: !root.busy

            SymbolImage {
                name: root.symbol
                color: Theme.primary
                size: 16
            }
            Label {
                text: root.text
                color: Theme.primary
                font.pixelSize: Theme.body
            }
        }
        BusyIndicator {
            objectName: "busyIndicator"
            anchors.centerIn: parent
            visible: root.busy
            running: root.busy
            implicitWidth: 18
            implicitHeight: 18
        }
    }
}
