pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The overview section's screen: the header naming the machine, the overall verdict leading
// to the diagnostics, the configuration and battery cards, a tile per remaining check with
// its live reading, and the time of the last analysis.
ColumnLayout {
    id: root

    required property MainWindowController controller

    readonly property ScreenData screen: root.controller.data
    readonly property RoleColour worst: RoleColour {
        role: root.screen.worstColourRole
    }
    // As many tiles of at least 158 points as fit side by side, 12 points apart.
    readonly property int tileColumns: Math.max(1, Math.floor((root.width + 12) / (158 + 12)))
    // Every tile as tall as the tallest, so that a row never has uneven tiles.
    readonly property real tileHeight: {
        let tallest = 0
        for (let i = 0; i < tiles.count; ++i) {
            const tile = tiles.itemAt(i)
            if (tile)
                tallest = Math.max(tallest, tile.implicitHeight)
        }
        return tallest
    }

    spacing: 11

    OverviewHeader {
        objectName: "overviewHeader"
        symbol: root.screen.machineSymbol
        title: root.screen.overviewTitle
        year: root.screen.modelYear
        configurationLine: root.screen.machineConfigurationLine
        modelLine: root.screen.machineModelLine
        Layout.fillWidth: true
    }

    Rectangle {
        objectName: "overviewBanner"
        visible: root.screen.hasReport
        implicitHeight: banner.implicitHeight + 32
        radius: 14
        color: Theme.faded(root.worst.value, 0.10)
        Layout.fillWidth: true

        RowLayout {
            id: banner

            x: 16
            y: 16
            width: parent.width - 32
            spacing: 14

            SymbolImage {
                name: root.screen.worstSymbol
                color: root.worst.value
                size: 26
            }
            ColumnLayout {
                spacing: 2
                Layout.fillWidth: true

                Label {
                    objectName: "bannerHeadline"
                    text: root.screen.headline
                    color: Theme.primary
                    font.pixelSize: Theme.headline
                    font.weight: Font.DemiBold
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Label {
                    objectName: "bannerDetail"
                    text: root.screen.detailLine
                    color: Theme.secondary
                    font.pixelSize: Theme.caption
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
            }
            Label {
                text: qsTr("Voir le détail")
                color: Theme.primary
                font.pixelSize: Theme.callout
            }
            SymbolImage {
                name: "chevron.right"
                color: Theme.tertiary
                size: Theme.caption
            }
        }

        PressArea {
            objectName: "bannerPress"
            anchors.fill: parent
            radius: parent.radius
            name: root.screen.headline + ", " + qsTr("Voir le détail")
            onActivated: root.controller.openSection("diagnostics")
        }
    }

    GridLayout {
        objectName: "highlightCards"
        visible: root.screen.hasHardware
        // Side by side where each card keeps its figures in two columns at least; one above
        // the other in a narrower window.
        columns: root.screen.hasBattery && root.width >= 2 * 320 + 14 ? 2 : 1
        columnSpacing: 14
        rowSpacing: 14
        Layout.fillWidth: true

        ConfigurationCard {
            figures: root.screen.configurationFigures
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.alignment: Qt.AlignTop
        }
        BatteryHighlightCard {
            visible: root.screen.hasBattery
            figures: root.screen.batteryFigures
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.alignment: Qt.AlignTop
        }
    }

    RowLayout {
        visible: root.screen.hasReport
        Layout.fillWidth: true

        Label {
            text: qsTr("État des composants")
            color: Theme.primary
            font.pixelSize: Theme.headline
            font.weight: Font.DemiBold
            Layout.alignment: Qt.AlignBaseline
        }
        Item {
            Layout.fillWidth: true
        }
        Label {
            objectName: "coverageLine"
            text: root.screen.coverageLine
            color: Theme.secondary
            font.pixelSize: Theme.caption
            Layout.alignment: Qt.AlignBaseline
        }
    }

    GridLayout {
        objectName: "tileGrid"
        visible: root.screen.hasReport
        columns: root.tileColumns
        columnSpacing: 12
        rowSpacing: 12
        Layout.fillWidth: true

        Repeater {
            id: tiles

            model: root.screen.tiles

            delegate: DeviceStatusTile {
                id: tile

                Layout.preferredWidth: (root.width - (root.tileColumns - 1) * 12) / root.tileColumns
                Layout.preferredHeight: root.tileHeight
                onActivated: root.controller.openSection(tile.section)
            }
        }
    }

    ColumnLayout {
        spacing: 8
        Layout.fillWidth: true

        Divider {
            Layout.fillWidth: true
        }
        Label {
            objectName: "footerLine"
            visible: text.length > 0
            text: root.screen.footerLine
            color: Theme.secondary
            font.pixelSize: Theme.caption
        }
    }
}
