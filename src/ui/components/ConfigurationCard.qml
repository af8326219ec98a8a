pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quillon

// The machine's configuration as labelled figures in as many columns of at least 130 points
// as fit, 14 points apart.
HighlightCard {
    id: root

    // A list of {label, value, tint} maps, tint a colour role.
    required property var figures

    // Widths come from the card's own, never from the grid's: the grid's size follows its
    // figures, and figures sized after the grid left it empty in one column.
    readonly property real contentWidth: root.width - 2 * root.padding
    readonly property int columns: Math.max(1, Math.floor((root.contentWidth + 14) / (130 + 14)))

    title: qsTr("Configuration")
    symbol: "cpu"

    // A positioner rather than a grid layout: the number of columns follows the width, and a
    // grid layout whose columns change while it lays out its repeated figures can crash
    // (Qt 6.4).
    Grid {
        id: grid

        objectName: "configurationFigures"
        columns: root.columns
        columnSpacing: 14
        rowSpacing: 14
        Layout.fillWidth: true
        Layout.preferredWidth: 1

        Repeater {
            model: root.figures

            delegate: StatBlock {
                id: block

                required property var modelData

                readonly property RoleColour tone: RoleColour {
                    role: block.modelData.tint
                }

                label: block.modelData.label
                value: block.modelData.value
                tint: block.tone.value
                // Columns of equal width.
                width: (root.contentWidth - (root.columns - 1) * 14) / root.columns
            }
        }
    }
}
