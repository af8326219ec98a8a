pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The hardware section's screen: the machine sheet, the live processor readings with one
// bar per core, the built-in components with their live lid angle, and where the values
// come from.
ColumnLayout {
    id: root

    required property MainWindowController controller

    spacing: 12

    HardwareScreen {
        id: screen

        controller: root.controller
    }

    Card {
        objectName: "sheetCard"
        title: qsTr("Fiche technique")
        systemImage: screen.sheetSymbol
        Layout.fillWidth: true

        InfoRowsView {
            rows: root.controller.data.hardwareRows
            Layout.fillWidth: true
        }
    }

    Card {
        objectName: "ownershipCard"
        title: qsTr("Propriété et verrous")
        systemImage: "lock.shield"
        visible: root.controller.data.ownershipChecks.count > 0
        Layout.fillWidth: true

        ColumnLayout {
            spacing: 0
            Layout.fillWidth: true
            Layout.leftMargin: -16
            Layout.rightMargin: -16

            Repeater {
                model: root.controller.data.ownershipChecks

                delegate: ColumnLayout {
                    id: fact

                    required property int index
                    required property string symbol
                    required property string title
                    required property string summary
                    required property string status
                    required property string measurement
                    required property string section

                    spacing: 0
                    Layout.fillWidth: true

                    Divider {
                        visible: fact.index > 0
                        Layout.leftMargin: 62
                        Layout.fillWidth: true
                    }
                    CheckRow {
                        objectName: "ownershipRow"
                        symbol: fact.symbol
                        title: fact.title
                        summary: fact.summary
                        status: fact.status
                        measurement: fact.measurement
                        section: ""
                        Layout.fillWidth: true
                    }
                }
            }
        }
    }

    Card {
        objectName: "processorCard"
        title: qsTr("Processeur en direct")
        systemImage: "cpu"
        accessory: screen.processorAccessory
        Layout.fillWidth: true

        InfoRowsView {
            rows: screen.processorRows
            Layout.fillWidth: true
        }
        Divider {
            visible: screen.coreBars.length > 0
            Layout.fillWidth: true
        }
        Label {
            visible: screen.coreBars.length > 0
            text: qsTr("Charge par cœur")
            color: Theme.secondary
            font.pixelSize: Theme.caption
        }
        CoreLoadBars {
            objectName: "coreLoadBars"
            visible: screen.coreBars.length > 0
            bars: screen.coreBars
            Layout.fillWidth: true
        }
    }

    Card {
        objectName: "componentsCard"
        title: qsTr("Composants intégrés")
        systemImage: "sensor"
        accessory: screen.componentsAccessory
        Layout.fillWidth: true

        ColumnLayout {
            spacing: 9
            Layout.fillWidth: true

            Repeater {
                model: screen.components

                delegate: BuiltInComponentEntry {
                    required property var modelData
                    required property int index

                    entry: modelData
                    showsDivider: index > 0
                    Layout.fillWidth: true
                }
            }
        }
    }

    Label {
        objectName: "sourcesNote"
        text: qsTr("Les valeurs viennent de system_profiler et sysctl ; les composants intégrés sont lus dans l'IORegistry, qui est la seule source pour Touch ID, le trackpad et les capteurs.")
        color: Theme.secondary
        font.pixelSize: Theme.footnote
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
}
