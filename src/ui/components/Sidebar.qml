pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The sidebar: the brand block, the list of the thirteen sections bound to the window's
// selection, and the settings button.
Rectangle {
    id: root

    required property MainWindowController controller
    // The window's merged title bar, whose buttons take the sidebar's top band; null for none.
    property QtObject chrome: null

    signal aboutRequested
    signal settingsRequested

    color: Theme.sidebarBackground

    function selectNeighbour(step) {
        const sections = root.controller.sections
        const here = sections.indexOf(root.controller.selection)
        const next = Math.max(0, Math.min(sections.count - 1, here + step))
        root.controller.selection = sections.sectionAt(next)
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        // The band under the window's buttons, as tall as the toolbar beside it.
        TitleBarArea {
            objectName: "sidebarTitleBar"
            chrome: root.chrome
            visible: root.chrome !== null
            Layout.fillWidth: true
            Layout.preferredHeight: 40
        }
        SidebarBrand {
            objectName: "sidebarBrand"
            Layout.fillWidth: true
            Layout.topMargin: 12
            Layout.bottomMargin: 8
            onClicked: root.aboutRequested()
        }
        ListView {
            id: list

            objectName: "sectionList"
            model: root.controller.sections
            clip: true
            focus: true
            boundsBehavior: Flickable.StopAtBounds
            Layout.fillWidth: true
            Layout.fillHeight: true
            Keys.onUpPressed: root.selectNeighbour(-1)
            Keys.onDownPressed: root.selectNeighbour(1)

            delegate: AbstractButton {
                id: row

                required property string section
                required property string title
                required property string symbol

                readonly property bool selected: root.controller.selection === row.section

                width: ListView.view.width
                height: 28
                hoverEnabled: true
                // VoiceOver reads the section's title, and which one is on screen.
                text: row.title
                Accessible.name: row.title
                Accessible.selected: row.selected
                onClicked: {
                    list.forceActiveFocus()
                    root.controller.selection = row.section
                }

                background: Rectangle {
                    x: 10
                    width: row.width - 20
                    height: row.height
                    radius: 6
                    color: row.selected ? Theme.selection : row.hovered ? Theme.faded(Theme.primary, 0.06) : "transparent"
                }
                contentItem: Item {
                    RowLayout {
                        x: 20
                        width: row.width - 40
                        anchors.verticalCenter: parent.verticalCenter
                        spacing: 8

                        SymbolImage {
                            name: row.symbol
                            color: row.selected ? Theme.onAccent : Theme.accent
                            size: 16
                        }
                        Label {
                            text: row.title
                            color: row.selected ? Theme.onAccent : Theme.primary
                            font.pixelSize: 13
                            elide: Text.ElideRight
                            Layout.fillWidth: true
                        }
                    }
                }
            }
        }
        SidebarSettingsButton {
            objectName: "settingsButton"
            Layout.fillWidth: true
            onClicked: root.settingsRequested()
        }
    }
}
