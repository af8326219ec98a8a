pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// One bar per processor core, 5 points apart, standing on a common base line: each rises in
// its slot to the core's load, in the accent colour at an opacity that grows with the load,
// with the core's number underneath.
RowLayout {
    id: root

    // Maps with "number", "opacity" and "height" (in points), in core order.
    required property var bars

    spacing: 5

    Repeater {
        model: root.bars

        delegate: ColumnLayout {
            id: core

            required property var modelData

            spacing: 3
            // Every core gets the same width, whatever the width of its number.
            Layout.preferredWidth: 1
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignBottom

            Item {
                implicitHeight: 46
                Layout.fillWidth: true

                Rectangle {
                    objectName: "coreBar"
                    anchors.bottom: parent.bottom
                    width: parent.width
                    height: core.modelData.height
                    radius: 3
                    color: Theme.accent
                    opacity: core.modelData.opacity
                }
            }
            Label {
                text: core.modelData.number
                color: Theme.secondary
                font.pixelSize: 9
                Layout.alignment: Qt.AlignHCenter
            }
        }
    }
}
