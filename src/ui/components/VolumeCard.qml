pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// One storage volume: its name with an internal/external badge, its capacity in large
// type, the used share in the volume's tint, a gauge, a legend of used and free space,
// then its disk, file system, mount point and S.M.A.R.T. state.
Rectangle {
    id: root

    // A volume as StorageScreen describes it.
    required property var volume
    // Gives the gauge bar's width.
    required property StorageScreen storage

    readonly property color tint: Theme.colour(root.volume.tintRole)

    implicitWidth: layout.implicitWidth + 40
    implicitHeight: layout.implicitHeight + 40
    radius: 16
    color: Theme.cardSurface
    border.width: 1
    border.color: Theme.hairline

    ColumnLayout {
        id: layout

        x: 20
        y: 20
        width: root.width - 40
        spacing: 18

        RowLayout {
            spacing: 8
            Layout.fillWidth: true

            SymbolImage {
                objectName: "volumeSymbol"
                name: root.volume.symbol
                color: Theme.accent
                size: 16
            }
            Label {
                objectName: "volumeName"
                text: root.volume.name
                color: Theme.primary
                font.pixelSize: Theme.headline
                font.weight: Font.DemiBold
                elide: Text.ElideRight
                // A long name gives way to the badge.
                Layout.maximumWidth: Math.max(0, layout.width - 140)
            }
            Rectangle {
                objectName: "volumeBadge"
                implicitWidth: badge.implicitWidth + 16
                implicitHeight: badge.implicitHeight + 6
                radius: height / 2
                color: Theme.faded(Theme.primary, 0.07)

                Label {
                    id: badge

                    anchors.centerIn: parent
                    text: root.volume.badge
                    color: Theme.secondary
                    font.pixelSize: Theme.caption2
                    font.weight: Font.Medium
                }
            }
            Item {
                Layout.fillWidth: true
            }
        }

        RowLayout {
            spacing: 12
            Layout.fillWidth: true

            ColumnLayout {
                spacing: 0

                RowLayout {
                    spacing: 4

                    Label {
                        objectName: "capacityValue"
                        text: root.volume.totalValue
                        color: Theme.primary
                        font.pixelSize: 46
                        font.weight: Font.DemiBold
                        Layout.alignment: Qt.AlignBaseline
                    }
                    Label {
                        objectName: "capacityUnit"
                        text: root.volume.totalUnit
                        color: Theme.primary
                        font.pixelSize: 20
                        Layout.alignment: Qt.AlignBaseline
                    }
                }
                Label {
                    text: qsTr("de capacité")
                    color: Theme.secondary
                    font.pixelSize: Theme.caption
                }
            }
            Item {
                Layout.fillWidth: true
            }
            ColumnLayout {
                spacing: 0
                Layout.alignment: Qt.AlignRight | Qt.AlignBottom

                Label {
                    objectName: "usedPercent"
                    text: root.volume.percentText
                    color: root.tint
                    font.pixelSize: 22
                    font.weight: Font.DemiBold
                    Layout.alignment: Qt.AlignRight
                }
                Label {
                    text: qsTr("utilisés")
                    color: Theme.secondary
                    font.pixelSize: Theme.caption
                    Layout.alignment: Qt.AlignRight
                }
            }
        }

        Rectangle {
            id: track

            objectName: "gaugeTrack"
            implicitHeight: 8
            radius: height / 2
            color: Theme.faded(Theme.primary, 0.08)
            clip: true
            Layout.fillWidth: true

            Rectangle {
                objectName: "gaugeBar"
                width: root.storage.gaugeBarWidth(track.width, root.volume.usedFraction)
                height: track.height
                radius: height / 2
                color: root.tint
            }
        }

        RowLayout {
            spacing: 22
            Layout.fillWidth: true

            VolumeLegendItem {
                dotColour: root.tint
                title: qsTr("Utilisé")
                value: root.volume.usedText
            }
            VolumeLegendItem {
                dotColour: Theme.faded(Theme.primary, 0.18)
                title: qsTr("Libre")
                value: root.volume.freeText
            }
            Item {
                Layout.fillWidth: true
            }
        }

        Divider {
            Layout.fillWidth: true
        }
        InfoRowsView {
            visible: root.volume.rows.length > 0
            rows: root.volume.rows
            Layout.fillWidth: true
        }
    }
}
