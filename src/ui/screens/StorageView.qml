pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quillon

// The storage section's screen: one card per volume, internal ones first, then by size.
ColumnLayout {
    id: root

    required property MainWindowController controller

    spacing: 14

    StorageScreen {
        id: screen

        controller: root.controller
    }

    Repeater {
        model: screen.volumes

        delegate: VolumeCard {
            required property var modelData

            objectName: "volumeCard"
            volume: modelData
            storage: screen
            Layout.fillWidth: true
        }
    }
}
