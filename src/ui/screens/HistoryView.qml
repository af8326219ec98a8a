pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import Quillon

// The journal of the machines checked on this computer: its empty message, or the count
// with the export and clear commands above one card per entry, in the journal's order. The
// list makes the cards that are on screen only, and reuses them as it scrolls.
Item {
    id: page

    required property MainWindowController controller

    JournalScreen {
        id: screen

        history: page.controller.history
    }

    JournalExport {
        id: journalExport

        objectName: "journalExport"
        history: page.controller.history
        onSaveRequested: proposedFile => {
            saveDialog.selectedFile = proposedFile
            saveDialog.open()
        }
        onExportFailed: description => {
            failureAlert.informativeText = description
            failureAlert.open()
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.leftMargin: 22
        anchors.rightMargin: 22
        anchors.topMargin: 22
        spacing: 12

        MessageView {
            objectName: "emptyJournal"
            visible: screen.count === 0
            symbol: "clock.arrow.circlepath"
            title: screen.isReading ? qsTr("Lecture du journal…") : qsTr("Aucune machine encore consignée")
            message: screen.isReading ? "" : qsTr("Chaque Mac analysé sera ajouté ici automatiquement.")
            tint: Theme.secondary
            Layout.fillWidth: true
            Layout.fillHeight: true
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
                    page.controller.history.search(searchText.text, searchLevel.words[searchLevel.currentIndex], "", "")
                }
            }
        }

        // Why the last change of the journal could not be written, or what opening it did.
        Label {
            objectName: "journalProblem"
            readonly property var history: page.controller.history
            visible: text.length > 0
            text: history && history.problem.length > 0 ? qsTr("Journal : ") + history.problem : ""
            color: Theme.orange
            font.pixelSize: Theme.callout
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }

        ListView {
            id: root

            readonly property real lineWidth: root.width

            objectName: "journalList"
            visible: screen.count > 0
            clip: true
            spacing: 12
            bottomMargin: 22
            reuseItems: true
            boundsBehavior: Flickable.StopAtBounds
            Layout.fillWidth: true
            Layout.fillHeight: true
            model: screen.entries
            ScrollBar.vertical: ScrollBar {}

            delegate: Card {
                id: entry

                required property string entryId
                required property string modelName
                required property string dateText
                required property string headline
                required property var rows
                required property string symbol
                required property string headlineColour

                objectName: "journalEntry"
                width: root.lineWidth
                title: entry.modelName
                systemImage: entry.symbol
                accessory: entry.dateText

                ColumnLayout {
                    spacing: 10
                    Layout.fillWidth: true

                    Label {
                        objectName: "journalHeadline"
                        text: entry.headline
                        color: Theme.colour(entry.headlineColour)
                        font.pixelSize: Theme.callout
                        font.weight: Font.Medium
                        wrapMode: Text.Wrap
                        Layout.fillWidth: true
                    }
                    InfoRowsView {
                        rows: entry.rows
                        Layout.fillWidth: true
                    }
                    LinkButton {
                        objectName: "removeEntryButton"
                        text: qsTr("Retirer")
                        Accessible.name: qsTr("Retirer %1 du %2").arg(entry.modelName).arg(entry.dateText)
                        pixelSize: Theme.caption
                        onClicked: screen.remove(entry.entryId)
                    }
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

    // Asks before clearing, the way a Mac asks before a destructive command: the red button
    // says what it does, Annuler is the default, Esc cancels.
    Dialog {
        id: clearConfirmation

        objectName: "clearConfirmation"
        modal: true
        anchors.centerIn: Overlay.overlay
        width: Math.min(440, page.width - 44)
        padding: 20
        onOpened: cancelClearButton.forceActiveFocus()
        onDiscarded: {
            clearConfirmation.close()
            screen.clear()
        }

        ColumnLayout {
            width: parent.width
            spacing: 8

            Label {
                objectName: "clearQuestion"
                text: qsTr("Effacer du journal les machines affichées ?")
                color: Theme.primary
                font.pixelSize: Theme.body
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            Label {
                text: qsTr("Vous pourrez les remettre avec Édition › Annuler l’effacement (⌘Z) tant que Quillon reste ouvert.")
                color: Theme.secondary
                font.pixelSize: Theme.callout
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }

        footer: DialogButtonBox {
            Button {
                id: cancelClearButton

                text: qsTr("Annuler")
                highlighted: true
                DialogButtonBox.buttonRole: DialogButtonBox.RejectRole
            }
            Button {
                objectName: "confirmClearButton"
                text: qsTr("Tout effacer")
                palette.buttonText: Theme.red
                DialogButtonBox.buttonRole: DialogButtonBox.DestructiveRole
            }
        }
    }

    MessageDialog {
        id: failureAlert

        objectName: "journalFailureAlert"
        title: qsTr("Export impossible")
        text: qsTr("Export impossible")
        buttons: MessageDialog.Ok
    }
}
