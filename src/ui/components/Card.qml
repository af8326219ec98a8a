pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// A rounded card on the card surface with a hairline border: an optional header (icon in
// the tint colour, title, accessory text on the trailing side) above its content. Children
// declared inside the card are its content, laid out in a column (use Layout.fillWidth).
Rectangle {
    id: root

    property string title: ""
    // Symbol name of the header icon; empty for none.
    property string systemImage: ""
    property string accessory: ""
    default property alias content: body.data

    // Metrics that HighlightCard changes.
    property int headerSpacing: 14
    property int accessoryPixelSize: Theme.subheadline
    property int padding: 18

    readonly property bool hasHeader: root.title.length > 0 || root.systemImage.length > 0 || root.accessory.length > 0

    implicitWidth: layout.implicitWidth + 2 * root.padding
    implicitHeight: layout.implicitHeight + 2 * root.padding
    radius: 14
    color: Theme.cardSurface
    border.width: 1
    border.color: Theme.hairline
    // VoiceOver reads a card as a group named by its header.
    Accessible.role: Accessible.Grouping
    Accessible.name: root.accessory.length > 0 ? root.title + ", " + root.accessory : root.title

    ColumnLayout {
        id: layout

        x: root.padding
        y: root.padding
        width: root.width - 2 * root.padding
        spacing: root.headerSpacing

        RowLayout {
            objectName: "cardHeader"
            visible: root.hasHeader
            spacing: 8
            Layout.fillWidth: true

            SymbolImage {
                objectName: "cardIcon"
                visible: root.systemImage.length > 0
                name: root.systemImage
                color: Theme.accent
                size: 16
            }
            Label {
                objectName: "cardTitle"
                text: root.title
                color: Theme.primary
                font.pixelSize: Theme.headline
                font.weight: Font.DemiBold
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            Label {
                objectName: "cardAccessory"
                visible: root.accessory.length > 0
                text: root.accessory
                color: Theme.secondary
                font.pixelSize: root.accessoryPixelSize
            }
        }
        ColumnLayout {
            id: body

            spacing: 12
            Layout.fillWidth: true
        }
    }
}
