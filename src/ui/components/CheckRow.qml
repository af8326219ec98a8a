pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// One verdict as a row of the diagnostics screen's checks card: the component's symbol in a
// tinted square, title and summary, the measurement, the level's pill and a chevron that
// shows only when the check leads to a section (it keeps its place otherwise, so that the
// columns line up). The whole row is a button when it leads somewhere.
Item {
    id: root

    required property string symbol
    required property string title
    required property string summary
    // The level's raw value ("ok"…).
    required property string status
    // Empty for none.
    required property string measurement
    // The section that shows the details, as a raw value; empty when there is none.
    required property string section

    // The row was clicked.
    signal activated

    readonly property RoleColour level: RoleColour {
        role: Presentation.levelColourRole(root.status)
    }

    implicitWidth: line.implicitWidth + 32
    implicitHeight: line.implicitHeight + 26

    RowLayout {
        id: line

        x: 16
        y: 13
        width: root.width - 32
        spacing: 14

        Rectangle {
            objectName: "checkIconSlot"
            implicitWidth: 34
            implicitHeight: 34
            radius: 9
            color: Theme.faded(root.level.value, 0.12)

            SymbolImage {
                objectName: "checkSymbol"
                anchors.centerIn: parent
                name: root.symbol
                color: root.level.value
                size: 15
            }
        }
        ColumnLayout {
            spacing: 2
            Layout.fillWidth: true

            Label {
                objectName: "checkTitle"
                text: root.title
                color: Theme.primary
                font.pixelSize: Theme.body
                font.weight: Font.Medium
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            Label {
                objectName: "checkSummary"
                text: root.summary
                color: Theme.secondary
                font.pixelSize: Theme.caption
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }
        Label {
            objectName: "checkMeasurement"
            visible: root.measurement.length > 0
            text: root.measurement
            color: Theme.primary
            font.pixelSize: 17
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignRight
            Layout.minimumWidth: 84
        }
        Item {
            implicitWidth: pill.implicitWidth
            implicitHeight: pill.implicitHeight
            Layout.minimumWidth: 106

            CheckPill {
                id: pill

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                status: root.status
            }
        }
        SymbolImage {
            objectName: "checkChevron"
            name: "chevron.right"
            color: Theme.primary
            size: Theme.caption
            opacity: root.section.length > 0 ? 1 : 0
        }
    }

    PressArea {
        objectName: "rowPress"
        anchors.fill: parent
        actionable: root.section.length > 0
        name: Presentation.spokenCheck(root.title, root.status, root.measurement)
        onActivated: root.activated()
    }
}
