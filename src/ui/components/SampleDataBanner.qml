pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// Says that the window shows recorded answers of another Mac, not the machine in front of
// the user, with the recording's description on one line (whole in its tooltip). Its close
// button asks to hide it; the window then says it in its title instead.
Rectangle {
    id: root

    required property string label
    required property string description

    // The close button was pressed.
    signal dismissed

    implicitHeight: row.implicitHeight + 10
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
            Layout.alignment: Qt.AlignVCenter
        }
        Label {
            id: notice

            objectName: "sampleNotice"
            text: root.paragraph
            textFormat: Text.StyledText
            color: Theme.primary
            font.pixelSize: Theme.callout
            elide: Text.ElideRight
            maximumLineCount: 1
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignVCenter

            HoverHandler {
                id: hover
            }
            ToolTip.visible: hover.hovered && notice.truncated
            ToolTip.text: root.label + " — " + root.description
            ToolTip.delay: 500
        }
        ToolButton {
            objectName: "sampleBannerClose"
            icon.source: Theme.symbolSource("xmark", Theme.secondary)
            icon.width: 10
            icon.height: 10
            implicitWidth: 22
            implicitHeight: 22
            Accessible.name: qsTr("Masquer")
            onClicked: root.dismissed()
            Layout.alignment: Qt.AlignVCenter
        }
    }
}
