pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quillon

// The storage section's screen. For now it lists the volumes with their capacity; the
// volume cards take this place with the storage screen.
ColumnLayout {
    id: root

    required property MainWindowController controller

    spacing: 14

    Card {
        title: Presentation.sectionTitle("storage")
        systemImage: Presentation.sectionSymbol("storage")
        Layout.fillWidth: true

        InfoRowsView {
            rows: root.controller.data.storageRows
            Layout.fillWidth: true
        }
    }
}
