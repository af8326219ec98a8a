pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quillon

// The diagnostics section's screen. For now it lists the verdicts as label/value rows; the
// verdict screen takes this place with the same input.
ColumnLayout {
    id: root

    required property MainWindowController controller

    spacing: 18

    Card {
        title: root.controller.data.headline
        systemImage: Presentation.sectionSymbol("diagnostics")
        Layout.fillWidth: true

        InfoRowsView {
            rows: root.controller.data.checkRows
            Layout.fillWidth: true
        }
    }
}
