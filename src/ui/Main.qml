// Not a bound-component file: the menu bar component is instantiated by its loader
// in the window's menu-bar slot.
import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import Quillon

// The main window: the sidebar of the thirteen sections beside the section on screen, with
// the toolbar above it. It tells its controller when it appears and disappears.
QuillonWindow {
    id: root

    required property MainWindowController controller

    readonly property bool usesSystemMenuBar: Qt.platform.os === "osx"
    // Set by the application when the title bar runs over the content (macOS): the toolbar
    // is then the title bar, and the window's buttons sit over the sidebar's top.
    property QtObject chrome: null

    // The sample-data banner was closed: the title says it instead.
    property bool sampleBannerDismissed: false

    title: root.controller.showsSampleData && root.sampleBannerDismissed
           ? root.controller.title + " — " + root.controller.sampleDataLabel : root.controller.title
    width: 1000
    height: 700
    minimumWidth: 820
    minimumHeight: 560
    visible: true

    function showAbout() {
        aboutWindow.open()
    }
    function showSettings() {
        settingsWindow.open()
    }

    Component.onCompleted: root.controller.appear()
    onClosing: root.controller.disappear()

    // The menus. On macOS they go to the system menu bar (MacMenuBar.qml); elsewhere the
    // window shows the same menus in its own bar.
    menuBar: Loader {
        active: !root.usesSystemMenuBar
        sourceComponent: MenuBar {
            Menu {
                title: AppIdentity.name

                Action {
                    text: qsTr("À propos de Quillon")
                    onTriggered: root.showAbout()
                }
                Action {
                    text: qsTr("Réglages de l'atelier")
                    shortcut: "Ctrl+,"
                    onTriggered: root.showSettings()
                }
                MenuSeparator {}
                Action {
                    text: qsTr("Quitter Quillon")
                    shortcut: StandardKey.Quit
                    onTriggered: Qt.quit()
                }
            }
            Menu {
                title: qsTr("Fichier")

                Action {
                    objectName: "exportAction"
                    text: qsTr("Exporter…")
                    shortcut: "Ctrl+E"
                    onTriggered: root.controller.startExport()
                }
                Action {
                    text: qsTr("Ouvrir une capture…")
                    shortcut: StandardKey.Open
                    onTriggered: captureDialog.open()
                }
                MenuSeparator {}
                Action {
                    text: qsTr("Fermer la fenêtre")
                    shortcut: StandardKey.Close
                    onTriggered: root.close()
                }
            }
            Menu {
                title: qsTr("Édition")

                Action {
                    objectName: "undoAction"
                    readonly property string undoText: root.controller.history.undoText
                    text: undoText.length > 0 ? undoText : qsTr("Annuler")
                    enabled: undoText.length > 0
                    shortcut: StandardKey.Undo
                    onTriggered: root.controller.history.undoRemoval()
                }
            }
            Menu {
                id: viewMenu

                title: qsTr("Présentation")

                Action {
                    objectName: "refreshAction"
                    text: qsTr("Actualiser")
                    shortcut: "Ctrl+R"
                    onTriggered: root.controller.refresh()
                }
                MenuSeparator {}
                Instantiator {
                    model: root.controller.sections
                    delegate: MenuItem {
                        required property int index
                        required property string section
                        required property string title

                        action: Action {
                            text: title
                            checkable: true
                            checked: root.controller.selection === section
                            // ⌘1 to ⌘9 for the first nine sections, in sidebar order.
                            shortcut: index < 9 ? "Ctrl+" + (index + 1) : ""
                            onTriggered: root.controller.openSection(section)
                        }
                    }
                    onObjectAdded: (index, object) => viewMenu.insertItem(index + 2, object)
                    onObjectRemoved: (index, object) => viewMenu.removeItem(object)
                }
            }
            Menu {
                title: qsTr("Fenêtre")

                Action {
                    text: qsTr("Réduire")
                    shortcut: "Ctrl+M"
                    onTriggered: root.showMinimized()
                }
            }
            Menu {
                title: qsTr("Aide")

                Action {
                    text: qsTr("À propos de Quillon")
                    onTriggered: root.showAbout()
                }
            }
        }
    }

    // On macOS the system menu bar carries the same menus.
    Loader {
        id: macMenus

        active: root.usesSystemMenuBar
        Component.onCompleted: {
            if (root.usesSystemMenuBar)
                macMenus.setSource("MacMenuBar.qml", { "controller": root.controller })
        }
        onLoaded: {
            item.aboutRequested.connect(root.showAbout)
            item.settingsRequested.connect(root.showSettings)
            item.openCaptureRequested.connect(captureDialog.open)
            item.closeRequested.connect(root.close)
            item.minimizeRequested.connect(root.showMinimized)
        }
    }

    FolderDialog {
        id: captureDialog

        objectName: "captureDialog"
        title: qsTr("Ouvrir une capture")
        onAccepted: root.controller.openCapture(captureDialog.selectedFolder)
    }

    SplitView {
        anchors.fill: parent
        orientation: Qt.Horizontal
        handle: Rectangle {
            implicitWidth: 1
            color: Theme.separator
        }

        Sidebar {
            objectName: "sidebar"
            controller: root.controller
            chrome: root.chrome
            SplitView.minimumWidth: 200
            SplitView.preferredWidth: 215
            SplitView.maximumWidth: 270
            onAboutRequested: root.showAbout()
            onSettingsRequested: root.showSettings()
        }
        ColumnLayout {
            spacing: 0
            SplitView.fillWidth: true

            MainToolBar {
                objectName: "toolbar"
                controller: root.controller
                chrome: root.chrome
                Layout.fillWidth: true
            }
            SampleDataBanner {
                objectName: "sampleBanner"
                visible: root.controller.showsSampleData && !root.sampleBannerDismissed
                onDismissed: root.sampleBannerDismissed = true
                label: root.controller.sampleDataLabel
                description: root.controller.sampleDescription
                Layout.fillWidth: true
            }
            SectionDetail {
                objectName: "detail"
                controller: root.controller
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
        }
    }

    ExportDialogs {
        controller: root.controller
    }
    AboutWindow {
        id: aboutWindow
    }
    SettingsWindow {
        id: settingsWindow

        workshop: root.controller.workshop
    }
}
