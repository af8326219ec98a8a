pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quillon

// The hardware section's screen. For now it shows the machine sheet; the live processor and
// built-in component cards join it with the hardware screen.
ColumnLayout {
    id: root

    required property MainWindowController controller

    spacing: 12

    Card {
        title: qsTr("Fiche technique")
        Layout.fillWidth: true

        InfoRowsView {
            rows: root.controller.data.hardwareRows
            Layout.fillWidth: true
        }
    }
}
