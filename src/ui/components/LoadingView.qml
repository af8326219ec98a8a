pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The loading state of a section: a spinning indicator above "Analyse en cours…", centred.
Item {
    id: root

    implicitWidth: column.implicitWidth
    implicitHeight: column.implicitHeight

    ColumnLayout {
        id: column

        anchors.centerIn: parent
        spacing: 12

        BusyIndicator {
            running: root.visible
            implicitWidth: 32
            implicitHeight: 32
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            objectName: "loadingText"
            text: qsTr("Analyse en cours…")
            color: Theme.secondary
            font.pixelSize: Theme.body
            Layout.alignment: Qt.AlignHCenter
        }
    }
}
