pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// A centred message filling the space it is given: a symbol in the tint colour, a title
// and, when given, a text over several lines.
Item {
    id: root

    required property string symbol
    required property string title
    // Empty when there is no text.
    property string message: ""
    required property color tint

    implicitWidth: column.implicitWidth + 80
    implicitHeight: column.implicitHeight + 80

    ColumnLayout {
        id: column

        anchors.centerIn: parent
        width: Math.max(0, Math.min(column.implicitWidth, root.width - 80, 480))
        spacing: 10

        SymbolImage {
            objectName: "messageSymbol"
            name: root.symbol
            color: root.tint
            size: 34
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            objectName: "messageTitle"
            text: root.title
            color: Theme.primary
            font.pixelSize: Theme.headline
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        Label {
            objectName: "messageText"
            visible: root.message.length > 0
            text: root.message
            color: Theme.secondary
            font.pixelSize: Theme.callout
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }
}
