pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// One verdict as a tile of the overview's grid: the component's symbol and the level's icon,
// the title, the value (a live reading first), an optional gauge and caption. A fault or a
// point to watch colours the whole tile; every other level sits on the card surface.
// Clicking it, or Space and Return once Tab has reached it, asks for the check's section.
Rectangle {
    id: root

    required property string symbol
    required property string title
    // The level's raw value ("ok"…).
    required property string status
    // The value and its colour role.
    required property string value
    required property string valueColourRole
    // The gauge's fill from 0 to 1, when the tile has one.
    required property bool hasProgress
    required property real progress
    // Empty for none.
    required property string caption
    // "red" or "orange" for a tile coloured as a whole; empty on the card surface.
    required property string tone
    // The section that shows the details, as a raw value; empty when there is none.
    required property string section

    // The tile was clicked.
    signal activated

    readonly property RoleColour level: RoleColour {
        role: Presentation.levelColourRole(root.status)
    }
    readonly property RoleColour wash: RoleColour {
        role: root.tone
    }
    readonly property RoleColour valueColour: RoleColour {
        role: root.valueColourRole
    }

    implicitWidth: 158
    implicitHeight: Math.max(106, face.implicitHeight + 26)
    radius: 13
    color: root.tone.length > 0 ? Theme.faded(root.wash.value, 0.12) : Theme.cardSurface
    border.width: 1
    border.color: root.tone.length > 0 ? Theme.faded(root.wash.value, 0.45) : Theme.hairline

    ColumnLayout {
        id: face

        x: 13
        y: 13
        width: root.width - 26
        spacing: 8

        RowLayout {
            spacing: 4
            Layout.fillWidth: true

            SymbolImage {
                objectName: "tileSymbol"
                name: root.symbol
                color: root.level.value
                size: 13
            }
            Item {
                Layout.fillWidth: true
            }
            SymbolImage {
                objectName: "tileLevel"
                name: Presentation.levelSymbol(root.status)
                color: root.level.value
                size: 11
            }
        }
        Label {
            objectName: "tileTitle"
            text: root.title
            color: Theme.primary
            font.pixelSize: Theme.subheadline
            font.weight: Font.Medium
            elide: Text.ElideRight
            maximumLineCount: 1
            Layout.fillWidth: true
        }
        Label {
            objectName: "tileValue"
            text: root.value
            color: root.valueColour.value
            font.pixelSize: 16
            font.weight: Font.DemiBold
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 10
            elide: Text.ElideRight
            maximumLineCount: 1
            Layout.fillWidth: true
        }
        Rectangle {
            objectName: "tileGauge"
            visible: root.hasProgress
            implicitHeight: 4
            radius: 2
            color: Theme.faded(root.level.value, 0.2)
            Layout.fillWidth: true

            Rectangle {
                objectName: "tileGaugeFill"
                width: parent.width * root.progress
                height: parent.height
                radius: 2
                color: root.level.value
            }
        }
        Label {
            objectName: "tileCaption"
            visible: root.caption.length > 0
            text: root.caption
            color: Theme.secondary
            font.pixelSize: Theme.caption
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
    }

    PressArea {
        objectName: "tilePress"
        anchors.fill: parent
        radius: root.radius
        name: Presentation.spokenCheck(root.title, root.status, root.value)
        onActivated: root.activated()
    }
}
