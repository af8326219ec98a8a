pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The battery section's screen: the maximum capacity in the health colour with the battery
// symbol and a line of cycles, charge and power state that follows the battery monitor; a
// warning for a worn battery; then every battery line.
ColumnLayout {
    id: root

    required property MainWindowController controller

    readonly property BatteryFigures figures: root.controller.data.batteryFigures
    readonly property RoleColour health: RoleColour {
        role: root.figures.screenHealthColourRole
    }

    spacing: 12

    Rectangle {
        objectName: "batterySummary"
        implicitHeight: summary.implicitHeight + 40
        radius: 16
        color: Theme.faded(root.health.value, 0.10)
        Layout.fillWidth: true

        RowLayout {
            id: summary

            x: 20
            y: 20
            width: parent.width - 40
            spacing: 18

            SymbolImage {
                objectName: "batterySymbol"
                name: root.figures.symbol
                color: root.health.value
                size: 40
            }
            ColumnLayout {
                spacing: 3
                Layout.fillWidth: true

                Label {
                    text: qsTr("CAPACITÉ MAXIMALE")
                    color: Theme.secondary
                    font.pixelSize: 9
                    font.weight: Font.DemiBold
                    font.letterSpacing: 0.6
                }
                RowLayout {
                    spacing: 3

                    Label {
                        objectName: "healthValue"
                        text: root.figures.healthText
                        color: root.health.value
                        font.pixelSize: 38
                        font.weight: Font.DemiBold
                        Layout.alignment: Qt.AlignBaseline
                    }
                    Label {
                        objectName: "healthSign"
                        visible: root.figures.hasHealth
                        text: "%"
                        color: Theme.secondary
                        font.pixelSize: 18
                        Layout.alignment: Qt.AlignBaseline
                    }
                }
                Label {
                    objectName: "batterySubtitle"
                    text: root.figures.subtitle
                    color: Theme.primary
                    font.pixelSize: Theme.callout
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }
            }
        }
    }

    Rectangle {
        objectName: "batteryWarning"
        visible: root.figures.showsReplacementWarning
        implicitHeight: warning.implicitHeight + 24
        radius: 10
        color: Theme.faded(Theme.orange, 0.12)
        Layout.fillWidth: true

        RowLayout {
            id: warning

            x: 12
            y: 12
            width: parent.width - 24
            spacing: 8

            SymbolImage {
                name: "exclamationmark.triangle.fill"
                color: Theme.orange
                size: 14
                Layout.alignment: Qt.AlignTop
            }
            Label {
                text: qsTr("Cette batterie a perdu une part importante de sa capacité d'origine — un remplacement est à envisager.")
                color: Theme.primary
                font.pixelSize: Theme.callout
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }
    }

    Card {
        title: qsTr("Détail")
        Layout.fillWidth: true

        InfoRowsView {
            objectName: "batteryRows"
            rows: root.figures.rows
            Layout.fillWidth: true
        }
    }
}
