pragma ComponentBehavior: Bound
import QtQuick
import Qt.labs.platform as Platform
import Quillon

// The macOS application menu: "À propos de Quillon" and "Réglages de l'atelier" (⌘,) take the
// places of the standard About and settings items.
Platform.MenuBar {
    id: root

    signal aboutRequested
    signal settingsRequested

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
}
