pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The journal of the machines checked on this computer: its empty message, or one card per
// entry in the journal's order. The journal screen takes this place with the same input.
ColumnLayout {
    id: root

    required property MainWindowController controller
    // The empty message fills at least this height.
    property real minimumHeight: 0

    spacing: 12

    MessageView {
        objectName: "emptyJournal"
        visible: root.controller.history.count === 0
        symbol: "clock.arrow.circlepath"
        title: qsTr("Aucune machine encore consignée")
        message: qsTr("Chaque Mac analysé sera ajouté ici automatiquement.")
        tint: Theme.secondary
        Layout.fillWidth: true
        Layout.preferredHeight: Math.max(implicitHeight, root.minimumHeight)
    }
    Repeater {
        model: root.controller.history

        delegate: Card {
            id: entry

            required property string modelName
            required property string dateText
            required property string headline
            required property int warningCount
            required property int faultCount

            readonly property bool isClean: entry.warningCount === 0 && entry.faultCount === 0

            title: entry.modelName
            systemImage: entry.isClean ? "checkmark.circle" : "exclamationmark.triangle"
            accessory: entry.dateText
            Layout.fillWidth: true

            Label {
                text: entry.headline
                color: entry.isClean ? Theme.green : Theme.orange
                font.pixelSize: Theme.callout
                font.weight: Font.Medium
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }
    }
}
