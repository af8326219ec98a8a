pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quillon

// The overview section's screen. For now it shows the machine sheet and the verdicts as
// label/value cards; the summary screen takes this place with the same input.
ColumnLayout {
    id: root

    required property MainWindowController controller

    spacing: 11

    Card {
        title: root.controller.data.modelName
        systemImage: root.controller.data.hasBattery ? "laptopcomputer" : "desktopcomputer"
        Layout.fillWidth: true

        InfoRowsView {
            rows: root.controller.data.hardwareRows
            Layout.fillWidth: true
        }
    }
    Card {
        visible: root.controller.data.hasReport
        title: root.controller.data.headline
        systemImage: Presentation.sectionSymbol("diagnostics")
        Layout.fillWidth: true

        InfoRowsView {
            rows: root.controller.data.checkRows
            Layout.fillWidth: true
        }
    }
}
