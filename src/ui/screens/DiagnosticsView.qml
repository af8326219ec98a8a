pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The diagnostics section's screen: the banner with the overall verdict and the tallies of
// the three levels that count, every check as a row with its measurement (a live reading
// first) and its level, then the disclaimer. Clicking a check opens its section.
ColumnLayout {
    id: root

    required property MainWindowController controller

    readonly property ScreenData screen: root.controller.data
    readonly property RoleColour worst: RoleColour {
        role: root.screen.worstColourRole
    }

    spacing: 18

    Rectangle {
        objectName: "verdictBanner"
        implicitHeight: banner.implicitHeight + 44
        radius: 16
        color: Theme.faded(root.worst.value, 0.10)
        Layout.fillWidth: true

        RowLayout {
            id: banner

            x: 22
            y: 22
            width: parent.width - 44
            spacing: 18

            Rectangle {
                implicitWidth: 68
                implicitHeight: 68
                radius: 34
                color: Theme.faded(root.worst.value, 0.15)

                SymbolImage {
                    objectName: "bannerSymbol"
                    anchors.centerIn: parent
                    name: root.screen.worstSymbol
                    color: root.worst.value
                    size: 30
                }
            }
            ColumnLayout {
                id: headlineColumn

                spacing: 4
                Layout.fillWidth: true

                Label {
                    objectName: "bannerHeadline"
                    text: root.screen.headline
                    color: Theme.primary
                    font.pixelSize: 23
                    font.weight: Font.DemiBold
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }
                Label {
                    objectName: "bannerLine"
                    text: root.screen.reportLine
                    color: Theme.secondary
                    font.pixelSize: Theme.callout
                    Layout.fillWidth: true
                }
            }
            // The tallies beside the headline where it keeps room for a line or two, under it
            // in a narrower window.
            RowLayout {
                id: tallyRow

                objectName: "tallyRow"
                readonly property bool besideHeadline: banner.width - 86 - tallyRow.implicitWidth - 18 >= 380

                parent: tallyRow.besideHeadline ? banner : headlineColumn
                spacing: 10
                Layout.topMargin: tallyRow.besideHeadline ? 0 : 8

                Repeater {
                    model: root.screen.tallies

                    delegate: Rectangle {
                        id: tally

                        required property var modelData

                        readonly property RoleColour tone: RoleColour {
                            role: tally.modelData.colourRole
                        }

                        objectName: "tally"
                        implicitWidth: Math.max(74, tallyColumn.implicitWidth + 16)
                        implicitHeight: tallyColumn.implicitHeight + 16
                        radius: 10
                        color: Theme.faded(Theme.cardSurface, 0.85)

                        Column {
                            id: tallyColumn

                            anchors.centerIn: parent

                            Label {
                                objectName: "tallyCount"
                                anchors.horizontalCenter: parent.horizontalCenter
                                text: tally.modelData.count
                                color: tally.tone.value
                                font.pixelSize: 22
                                font.weight: Font.DemiBold
                            }
                            Label {
                                objectName: "tallyLabel"
                                anchors.horizontalCenter: parent.horizontalCenter
                                text: tally.modelData.label
                                color: Theme.secondary
                                font.pixelSize: Theme.caption2
                            }
                        }
                    }
                }
            }
        }
    }

    Rectangle {
        objectName: "checksCard"
        implicitHeight: checks.implicitHeight
        radius: 14
        color: Theme.cardSurface
        border.width: 1
        border.color: Theme.hairline
        Layout.fillWidth: true

        Column {
            id: checks

            width: parent.width

            Repeater {
                model: root.screen.checks

                delegate: Column {
                    id: entry

                    required property int index
                    required property string symbol
                    required property string title
                    required property string summary
                    required property string status
                    required property string measurement
                    required property string section

                    width: checks.width

                    // Under the texts, not under the icons; none above the first row.
                    Divider {
                        objectName: "checkDivider"
                        visible: entry.index > 0
                        x: 62
                        width: parent.width - 62
                    }
                    CheckRow {
                        width: parent.width
                        symbol: entry.symbol
                        title: entry.title
                        summary: entry.summary
                        status: entry.status
                        measurement: entry.measurement
                        section: entry.section
                        onActivated: root.controller.openSection(entry.section)
                    }
                }
            }
        }
    }

    Label {
        objectName: "disclaimer"
        text: qsTr("Ces contrôles comparent l'état rapporté par macOS à des seuils fixes. Ce ne sont pas des tests de charge : ils ne sollicitent pas le matériel.")
        color: Theme.secondary
        font.pixelSize: Theme.footnote
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
}
