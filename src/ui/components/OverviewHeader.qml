pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The overview's header: the machine icon beside its name, the model year as a badge, and,
// once the machine is known, a line with chip, memory and system and a line with the
// commercial name and the cores; on an accent wash.
Rectangle {
    id: root

    required property string symbol
    required property string title
    // Empty when unknown: no badge.
    required property string year
    // Empty while the machine is not known: the line is left out.
    required property string configurationLine
    required property string modelLine

    implicitHeight: content.implicitHeight + 44
    radius: 18
    border.width: 1
    border.color: Theme.faded(Theme.accent, 0.18)
    gradient: Gradient {
        orientation: Gradient.Horizontal

        GradientStop {
            position: 0
            color: Theme.faded(Theme.accent, 0.17)
        }
        GradientStop {
            position: 1
            color: Theme.faded(Theme.accent, 0.05)
        }
    }

    RowLayout {
        id: content

        x: 22
        y: 22
        width: root.width - 44
        spacing: 15

        Item {
            implicitWidth: 60
            implicitHeight: 44

            SymbolImage {
                objectName: "machineSymbol"
                anchors.centerIn: parent
                name: root.symbol
                color: Theme.accent
                size: 44
            }
        }
        ColumnLayout {
            spacing: 5
            Layout.fillWidth: true

            RowLayout {
                spacing: 10
                Layout.fillWidth: true

                Label {
                    objectName: "overviewTitle"
                    text: root.title
                    color: Theme.primary
                    font.pixelSize: 25
                    font.weight: Font.DemiBold
                    elide: Text.ElideRight
                    // Its own width, cut only when the badge would not fit beside it.
                    Layout.maximumWidth: root.width - 44 - 60 - 15 - (yearBadge.visible ? yearBadge.implicitWidth + 10 : 0)
                    Layout.alignment: Qt.AlignBaseline
                }
                Rectangle {
                    id: yearBadge

                    objectName: "yearBadge"
                    visible: root.year.length > 0
                    implicitWidth: yearText.implicitWidth + 20
                    implicitHeight: yearText.implicitHeight + 6
                    radius: 7
                    color: Theme.faded(Theme.accent, 0.18)
                    Layout.alignment: Qt.AlignBaseline
                    baselineOffset: yearText.y + yearText.baselineOffset

                    Label {
                        id: yearText

                        anchors.centerIn: parent
                        text: root.year
                        color: Theme.accent
                        font.pixelSize: 17
                        font.weight: Font.Bold
                    }
                }
            }
            Label {
                objectName: "machineConfigurationLine"
                visible: root.configurationLine.length > 0
                text: root.configurationLine
                color: Theme.secondary
                font.pixelSize: Theme.callout
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            Label {
                objectName: "machineModelLine"
                visible: root.modelLine.length > 0
                text: root.modelLine
                color: Theme.secondary
                font.pixelSize: Theme.caption
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
        }
    }
}
