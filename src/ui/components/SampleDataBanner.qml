pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// Says that the window shows recorded answers of another Mac, not the machine in front of
// the user, with the recording's description.
Rectangle {
    id: root

    required property string label
    required property string description

    implicitHeight: row.implicitHeight + 14
    color: Theme.faded(Theme.accent, 0.10)

    // The words in bold, then the description, as one paragraph.
    readonly property string paragraph: "<b>" + root.escaped(root.label) + "</b>&nbsp;&nbsp;" + root.escaped(root.description)

    function escaped(text) {
        return text.replace(/&/g, "&amp;").replace(/</g, "&lt;").replace(/>/g, "&gt;")
    }

    RowLayout {
        id: row

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.leftMargin: 22
        anchors.rightMargin: 22
        spacing: 8

        SymbolImage {
            name: "info.circle.fill"
            color: Theme.accent
            size: 14
            Layout.alignment: Qt.AlignTop
        }
        Label {
            objectName: "sampleNotice"
            text: root.paragraph
            textFormat: Text.StyledText
            color: Theme.primary
            font.pixelSize: Theme.callout
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignTop
        }
    }
}
