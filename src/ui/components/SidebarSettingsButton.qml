pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The settings button at the bottom of the sidebar, below a divider; it opens the workshop
// settings window. The whole row is clickable.
ColumnLayout {
    id: root

    signal clicked

    spacing: 0

    Divider {
        Layout.fillWidth: true
    }
    AbstractButton {
        id: button

        leftPadding: 14
        rightPadding: 14
        topPadding: 9
        bottomPadding: 9
        hoverEnabled: true
        text: qsTr("Réglages")
        Accessible.name: button.text
        Layout.fillWidth: true
        onClicked: root.clicked()

        background: Rectangle {
            color: button.hovered ? Theme.faded(Theme.primary, 0.05) : "transparent"
        }
        contentItem: RowLayout {
            spacing: 6

            SymbolImage {
                name: "gearshape"
                color: Theme.secondary
                size: 14
            }
            Label {
                objectName: "settingsLabel"
                text: qsTr("Réglages")
                color: Theme.primary
                font.pixelSize: 12
                Layout.fillWidth: true
            }
        }
    }
}
