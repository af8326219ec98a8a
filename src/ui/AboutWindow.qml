pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// The About window, sized to its content and not resizable.
QuillonWindow {
    id: root

    readonly property int margin: 24

    title: qsTr("À propos de Quillon")
    flags: Qt.Dialog
    visible: false
    width: content.implicitWidth + 2 * root.margin
    height: content.implicitHeight + 2 * root.margin
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

    AboutView {
        id: content

        x: root.margin
        y: root.margin
        width: implicitWidth
    }
}
