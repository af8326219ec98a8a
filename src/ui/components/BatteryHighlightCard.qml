pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The battery at a glance: its maximum capacity and condition with a bar, then the cycles,
// the charge level and the power state, which follow the battery monitor.
HighlightCard {
    id: root

    required property BatteryFigures figures

    readonly property RoleColour health: RoleColour {
        role: root.figures.cardHealthColourRole
    }
    readonly property RoleColour power: RoleColour {
        role: root.figures.powerColourRole
    }

    title: qsTr("Batterie")
    symbol: root.figures.symbol
    accessory: root.figures.remainingTime

    ColumnLayout {
        spacing: 15
        Layout.fillWidth: true

        Label {
            text: qsTr("CAPACITÉ MAXIMALE")
            color: Theme.secondary
            font.pixelSize: 9
            font.weight: Font.DemiBold
            font.letterSpacing: 0.6
        }
        RowLayout {
            spacing: 6
            Layout.fillWidth: true

            Label {
                objectName: "healthValue"
                text: root.figures.healthText
                color: root.health.value
                font.pixelSize: 44
                font.weight: Font.DemiBold
                Layout.alignment: Qt.AlignBaseline
            }
            Label {
                objectName: "healthSign"
                visible: root.figures.hasHealth
                text: "%"
                color: Theme.secondary
                font.pixelSize: 20
                font.weight: Font.Medium
                Layout.alignment: Qt.AlignBaseline
            }
            Label {
                objectName: "conditionText"
                text: root.figures.conditionText
                color: root.health.value
                font.pixelSize: Theme.callout
                font.weight: Font.Medium
                elide: Text.ElideRight
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignBaseline
            }
        }
        Rectangle {
            objectName: "healthBar"
            implicitHeight: 4
            radius: 2
            color: Theme.faded(Theme.primary, 0.08)
            Layout.fillWidth: true

            Rectangle {
                width: parent.width * root.figures.healthFraction
                height: parent.height
                radius: 2
                color: root.health.value
            }
        }
        Divider {
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: 14
            Layout.fillWidth: true

            // Each block gets the width that shows it whole, then a share of what is left.
            StatBlock {
                id: cyclesBlock

                label: qsTr("Cycles")
                value: root.figures.cycleCountText
                Layout.fillWidth: true
                Layout.preferredWidth: cyclesBlock.naturalWidth
                Layout.alignment: Qt.AlignTop
            }
            StatBlock {
                id: chargeBlock

                label: qsTr("Niveau de charge")
                value: root.figures.chargeText
                Layout.fillWidth: true
                Layout.preferredWidth: chargeBlock.naturalWidth
                Layout.alignment: Qt.AlignTop
            }
            StatBlock {
                id: powerBlock

                objectName: "powerBlock"
                label: qsTr("Alimentation")
                value: root.figures.powerStateText
                tint: root.power.value
                Layout.fillWidth: true
                Layout.preferredWidth: powerBlock.naturalWidth
                Layout.alignment: Qt.AlignTop
            }
        }
    }
}
