pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// The workshop settings window, sized to its form.
QuillonWindow {
    id: root

    required property QtObject workshop
    readonly property int margin: 20

    title: qsTr("Réglages de l'atelier")
    flags: Qt.Dialog
    visible: false
    width: form.width + 2 * root.margin
    height: form.implicitHeight + 2 * root.margin
    minimumWidth: root.width
    maximumWidth: root.width
    minimumHeight: root.height
    maximumHeight: root.height

    function open() {
        root.show()
        root.raise()
        root.requestActivate()
    }

    // Esc and ⌘W close a secondary window, as on any Mac.
    Shortcut {
        sequences: ["Esc", StandardKey.Close]
        onActivated: root.close()
    }

    WorkshopSettingsView {
        id: form

        x: root.margin
        y: root.margin
        width: 460
        workshop: root.workshop
    }
}
