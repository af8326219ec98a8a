pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quillon

// The battery section's screen. For now it shows the battery lines; the summary panel
// joins them with the battery screen.
ColumnLayout {
    id: root

    required property MainWindowController controller

    spacing: 12

    Card {
        title: qsTr("Détail")
        Layout.fillWidth: true

        InfoRowsView {
            rows: root.controller.data.batteryRows
            Layout.fillWidth: true
        }
    }
}
