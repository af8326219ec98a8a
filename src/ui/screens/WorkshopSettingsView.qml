pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The workshop settings form: one section with the workshop's name, phone and address,
// stored as they are typed, and a footer saying where they go.
ColumnLayout {
    id: root

    // The workshop settings store (workshopName, workshopPhone, workshopAddress).
    required property QtObject workshop

    spacing: 8

    Label {
        objectName: "sectionHeader"
        text: qsTr("En-tête de l'atelier")
        color: Theme.secondary
        font.pixelSize: Theme.subheadline
        font.weight: Font.DemiBold
        Layout.leftMargin: 4
    }
    Rectangle {
        color: Theme.cardSurface
        radius: 10
        border.width: 1
        border.color: Theme.hairline
        implicitHeight: fields.implicitHeight + 24
        Layout.fillWidth: true

        ColumnLayout {
            id: fields

            x: 12
            y: 12
            width: parent.width - 24
            spacing: 4

            Label {
                text: qsTr("Nom de l'atelier")
                color: Theme.secondary
                font.pixelSize: Theme.caption
                Layout.topMargin: 0
            }
            FormField {
                objectName: "nameField"
                Accessible.name: qsTr("Nom de l'atelier")
                text: root.workshop.workshopName
                onTextEdited: root.workshop.workshopName = text
                Layout.fillWidth: true
            }
            Label {
                text: qsTr("Téléphone")
                color: Theme.secondary
                font.pixelSize: Theme.caption
                Layout.topMargin: 6
            }
            FormField {
                objectName: "phoneField"
                Accessible.name: qsTr("Téléphone")
                text: root.workshop.workshopPhone
                onTextEdited: root.workshop.workshopPhone = text
                Layout.fillWidth: true
            }
            Label {
                text: qsTr("Adresse")
                color: Theme.secondary
                font.pixelSize: Theme.caption
                Layout.topMargin: 6
            }
            FormField {
                objectName: "addressField"
                Accessible.name: qsTr("Adresse")
                text: root.workshop.workshopAddress
                onTextEdited: root.workshop.workshopAddress = text
                Layout.fillWidth: true
            }
        }
    }
    Label {
        objectName: "sectionFooter"
        text: qsTr("Ces informations n'apparaissent que dans les rapports que vous exportez. Elles ne quittent jamais cette machine.")
        color: Theme.secondary
        font.pixelSize: Theme.caption
        wrapMode: Text.Wrap
        Layout.leftMargin: 4
        Layout.rightMargin: 4
        Layout.fillWidth: true
    }
}
