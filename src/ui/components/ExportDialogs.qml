pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Dialogs
import Quillon

// The dialogs of the report export: the save dialog proposing the report's file name, and
// the alert shown when the file cannot be written.
Item {
    id: root

    required property MainWindowController controller

    Connections {
        target: root.controller

        function onSaveRequested(proposedFile) {
            saveDialog.selectedFile = proposedFile
            saveDialog.open()
        }
        function onExportFailed(description) {
            failureAlert.informativeText = description
            failureAlert.open()
        }
    }

    FileDialog {
        id: saveDialog

        objectName: "saveDialog"
        title: qsTr("Exporter le bilan")
        fileMode: FileDialog.SaveFile
        defaultSuffix: "pdf"
        nameFilters: [qsTr("PDF (*.pdf)"), qsTr("Texte (*.txt)")]
        onAccepted: root.controller.finishExport(saveDialog.selectedFile)
        onRejected: root.controller.cancelExport()
    }

    MessageDialog {
        id: failureAlert

        objectName: "failureAlert"
        title: qsTr("Export impossible")
        text: qsTr("Export impossible")
        buttons: MessageDialog.Ok
    }
}
