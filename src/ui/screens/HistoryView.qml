pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import Quillon

// The journal of the machines checked on this computer: its empty message, or the count
// with the export and clear commands above one card per entry, in the journal's order.
ColumnLayout {
    id: root

    required property MainWindowController controller
    // The empty message fills at least this height.
    property real minimumHeight: 0

    spacing: 12

    JournalScreen {
        id: screen

        history: root.controller.history
    }

    JournalExport {
        id: journalExport

        objectName: "journalExport"
        history: root.controller.history
        onSaveRequested: proposedFile => {
            saveDialog.selectedFile = proposedFile
            saveDialog.open()
        }
        onExportFailed: description => {
            failureAlert.informativeText = description
            failureAlert.open()
        }
    }

    MessageView {
        objectName: "emptyJournal"
        visible: screen.count === 0
        symbol: "clock.arrow.circlepath"
        title: qsTr("Aucune machine encore consignée")
        message: qsTr("Chaque Mac analysé sera ajouté ici automatiquement.")
        tint: Theme.secondary
        Layout.fillWidth: true
        Layout.preferredHeight: Math.max(implicitHeight, root.minimumHeight)
    }

    RowLayout {
        objectName: "journalToolbar"
        visible: screen.count > 0
        spacing: 8
        Layout.fillWidth: true

        Label {
            objectName: "journalCount"
            text: screen.countText
            color: Theme.secondary
            font.pixelSize: Theme.callout
        }
        Item {
            Layout.fillWidth: true
        }
        ToolbarButton {
            objectName: "exportJournalButton"
            text: qsTr("Exporter en tableur")
            tip: qsTr("Exporter en tableur")
            symbol: "tablecells"
            onClicked: journalExport.start()
        }
        ToolbarButton {
            objectName: "clearJournalButton"
            text: qsTr("Tout effacer")
            tip: qsTr("Tout effacer")
            symbol: "trash"
            onClicked: clearConfirmation.open()
        }
    }

    // The search over the whole journal: a serial number or a model, and a verdict level.
    RowLayout {
        objectName: "journalSearch"
        visible: screen.count > 0
        spacing: 8
        Layout.fillWidth: true

        FormField {
            id: searchText

            objectName: "journalSearchText"
            placeholderText: qsTr("Numéro de série ou modèle")
            Accessible.name: qsTr("Rechercher dans le journal")
            onTextChanged: searchLevel.apply()
            Layout.fillWidth: true
        }
        ComboBox {
            id: searchLevel

            objectName: "journalSearchLevel"
            readonly property var words: ["tout", "correct", "attention", "anomalie"]
            model: [qsTr("Tous les verdicts"), qsTr("Corrects"), qsTr("À surveiller"), qsTr("Anomalies")]
            Accessible.name: qsTr("Verdict")
            implicitContentWidthPolicy: ComboBox.WidestText
            onActivated: searchLevel.apply()

            function apply() {
                root.controller.history.search(searchText.text, searchLevel.words[searchLevel.currentIndex], "", "")
            }
        }
    }

    // Why the last change of the journal could not be written, or what opening it did.
    Label {
        objectName: "journalProblem"
        readonly property var history: root.controller.history
        visible: text.length > 0
        text: history && history.problem.length > 0 ? qsTr("Journal : ") + history.problem : ""
        color: Theme.orange
        font.pixelSize: Theme.callout
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }

    Repeater {
        model: screen.history

        delegate: Card {
            id: entry

            required property string entryId
            required property string modelName
            required property string dateText
            required property string headline
            required property int warningCount
            required property int faultCount
            required property int failedReadCount

            objectName: "journalEntry"
            title: entry.modelName
            systemImage: screen.symbolFor(entry.warningCount, entry.faultCount, entry.failedReadCount)
            accessory: entry.dateText
            Layout.fillWidth: true

            ColumnLayout {
                spacing: 10
                Layout.fillWidth: true

                Label {
                    objectName: "journalHeadline"
                    text: entry.headline
                    color: Theme.colour(screen.headlineRoleFor(entry.warningCount, entry.faultCount, entry.failedReadCount))
                    font.pixelSize: Theme.callout
                    font.weight: Font.Medium
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }
                InfoRowsView {
                    rows: screen.rowsFor(entry.entryId)
                    Layout.fillWidth: true
                }
                LinkButton {
                    objectName: "removeEntryButton"
                    text: qsTr("Retirer")
                    pixelSize: Theme.caption
                    onClicked: screen.remove(entry.entryId)
                }
            }
        }
    }

    FileDialog {
        id: saveDialog

        objectName: "journalSaveDialog"
        title: qsTr("Exporter le journal")
        fileMode: FileDialog.SaveFile
        defaultSuffix: "csv"
        nameFilters: ["*.csv"]
        onAccepted: journalExport.finish(saveDialog.selectedFile)
        onRejected: journalExport.cancel()
    }

    LinkButton {
        objectName: "showAllEntries"
        readonly property var history: root.controller.history
        visible: history !== null && !history.showsAll && history.count > 500
        text: qsTr("Tout afficher (%1 machines)").arg(history ? history.count : 0)
        onClicked: history.showsAll = true
    }

    MessageDialog {
        id: clearConfirmation

        objectName: "clearConfirmation"
        title: qsTr("Tout effacer")
        text: qsTr("Effacer toutes les machines du journal ?")
        informativeText: qsTr("Les entrées effacées ne peuvent pas être récupérées.")
        buttons: MessageDialog.Ok | MessageDialog.Cancel
        onAccepted: screen.clear()
    }

    MessageDialog {
        id: failureAlert

        objectName: "journalFailureAlert"
        title: qsTr("Export impossible")
        text: qsTr("Export impossible")
        buttons: MessageDialog.Ok
    }
}
