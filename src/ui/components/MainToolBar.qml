pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The window's toolbar above the detail area: the title of the section on screen, then the
// export and refresh commands. Where the title bar is merged with it (macOS), it is the
// window's title bar too.
Rectangle {
    id: root

    required property MainWindowController controller
    property QtObject chrome: null

    implicitHeight: 52
    color: Theme.windowBackground

    TitleBarArea {
        anchors.fill: parent
        chrome: root.chrome
    }
    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 22
        anchors.rightMargin: 12
        spacing: 6

        Label {
            objectName: "sectionTitle"
            text: root.controller.title
            color: Theme.primary
            font.pixelSize: 15
            font.weight: Font.Bold
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        ToolbarButton {
            objectName: "exportButton"
            text: qsTr("Exporter")
            symbol: "square.and.arrow.up"
            tip: qsTr("Exporter le bilan complet en fichier texte")
            busy: root.controller.isExporting
            onClicked: root.controller.startExport()
        }
        ToolbarButton {
            objectName: "refreshButton"
            text: qsTr("Actualiser")
            symbol: "arrow.clockwise"
            tip: qsTr("Relancer l'analyse (⌘R)")
            busy: root.controller.isRefreshing
            onClicked: root.controller.refresh()
        }
    }
    Divider {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
    }
}
