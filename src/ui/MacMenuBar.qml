pragma ComponentBehavior: Bound
import QtQuick
import Qt.labs.platform as Platform
import Quillon

// The macOS menu bar, in French: the application menu ("À propos de Quillon", "Réglages de
// l'atelier" ⌘, in the standard places), Fichier, Édition (⌘Z puts back what was removed
// from the journal), Présentation with the sections ⌘1…⌘9, Fenêtre and Aide. Actions that belong to the window are asked for by signal.
Platform.MenuBar {
    id: root

    required property MainWindowController controller

    signal aboutRequested
    signal settingsRequested
    signal openCaptureRequested
    signal closeRequested
    signal minimizeRequested

    Platform.Menu {
        title: AppIdentity.name

        Platform.MenuItem {
            text: qsTr("À propos de Quillon")
            role: Platform.MenuItem.AboutRole
            onTriggered: root.aboutRequested()
        }
        Platform.MenuItem {
            text: qsTr("Réglages de l'atelier")
            role: Platform.MenuItem.PreferencesRole
            shortcut: "Ctrl+,"
            onTriggered: root.settingsRequested()
        }
    }
    Platform.Menu {
        title: qsTr("Fichier")

        Platform.MenuItem {
            text: qsTr("Exporter…")
            shortcut: "Ctrl+E"
            onTriggered: root.controller.startExport()
        }
        Platform.MenuItem {
            text: qsTr("Ouvrir une capture…")
            shortcut: StandardKey.Open
            onTriggered: root.openCaptureRequested()
        }
        Platform.MenuSeparator {}
        Platform.MenuItem {
            text: qsTr("Fermer la fenêtre")
            shortcut: StandardKey.Close
            onTriggered: root.closeRequested()
        }
    }
    Platform.Menu {
        title: qsTr("Édition")

        Platform.MenuItem {
            readonly property string undoText: root.controller.history.undoText
            text: undoText.length > 0 ? undoText : qsTr("Annuler")
            enabled: undoText.length > 0
            shortcut: StandardKey.Undo
            onTriggered: root.controller.history.undoRemoval()
        }
    }
    Platform.Menu {
        id: viewMenu

        title: qsTr("Présentation")

        Platform.MenuItem {
            text: qsTr("Actualiser")
            shortcut: "Ctrl+R"
            onTriggered: root.controller.refresh()
        }
        Platform.MenuSeparator {}
        Instantiator {
            model: root.controller.sections
            delegate: Platform.MenuItem {
                required property int index
                required property string section
                required property string title

                text: title
                checkable: true
                checked: root.controller.selection === section
                shortcut: index < 9 ? "Ctrl+" + (index + 1) : ""
                onTriggered: root.controller.openSection(section)
            }
            onObjectAdded: (index, object) => viewMenu.insertItem(index + 2, object)
            onObjectRemoved: (index, object) => viewMenu.removeItem(object)
        }
    }
    Platform.Menu {
        title: qsTr("Fenêtre")

        Platform.MenuItem {
            text: qsTr("Réduire")
            shortcut: "Ctrl+M"
            onTriggered: root.minimizeRequested()
        }
    }
    Platform.Menu {
        title: qsTr("Aide")

        Platform.MenuItem {
            text: qsTr("À propos de Quillon")
            onTriggered: root.aboutRequested()
        }
    }
}
