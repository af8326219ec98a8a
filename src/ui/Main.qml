// Not a bound-component file: the menu bar component is instantiated by its loader
// in the window's menu-bar slot.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The main window: the sidebar of the thirteen sections beside the section on screen, with
// the toolbar above it. It tells its controller when it appears and disappears.
QuillonWindow {
    id: root

    required property MainWindowController controller

    readonly property bool usesSystemMenuBar: Qt.platform.os === "osx"

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
            }
        }
    }

    // On macOS the application menu carries the About and settings items.
    Loader {
        active: root.usesSystemMenuBar
        source: root.usesSystemMenuBar ? "MacMenuBar.qml" : ""
        onLoaded: {
            item.aboutRequested.connect(root.showAbout)
            item.settingsRequested.connect(root.showSettings)
        }
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
