pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The content of the About window: the application's icon, name, version and tagline,
// three feature lines, and the links to the product's web page and privacy policy.
ColumnLayout {
    id: root

    spacing: 16

    RowLayout {
        spacing: 14

        AppIconView {
            objectName: "aboutIcon"
            shadowOpacity: 0.18
            Layout.preferredWidth: 52
            Layout.preferredHeight: 52
        }
        ColumnLayout {
            spacing: 2

            Label {
                objectName: "aboutName"
                text: AppIdentity.name
                color: Theme.primary
                font.pixelSize: 19
                font.weight: Font.Bold
            }
            Label {
                objectName: "aboutVersion"
                text: AppIdentity.versionText
                color: Theme.secondary
                font.pixelSize: Theme.caption
            }
            Label {
                text: qsTr("Bilan matériel et périphériques")
                color: Theme.primary
                font.pixelSize: Theme.body
            }
        }
    }
    ColumnLayout {
        spacing: 8

        Repeater {
            model: [
                { symbol: "laptopcomputer", text: qsTr("Vingt composants contrôlés") },
                { symbol: "bolt.horizontal", text: qsTr("Angle d'écran, charge et température en direct") },
                { symbol: "lock.shield", text: qsTr("Aucune donnée ne quitte cette machine") }
            ]

            delegate: RowLayout {
                id: feature

                required property var modelData

                spacing: 8

                Item {
                    implicitWidth: 16
                    implicitHeight: 14

                    SymbolImage {
                        anchors.centerIn: parent
                        name: feature.modelData.symbol
                        color: Theme.accent
                        size: 13
                    }
                }
                Label {
                    objectName: "featureText"
                    text: feature.modelData.text
                    color: Theme.primary
                    font.pixelSize: Theme.body
                }
            }
        }
    }
    ColumnLayout {
        spacing: 10
        Layout.fillWidth: true

        Divider {
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: 16

            LinkButton {
                text: qsTr("Site")
                onClicked: AppIdentity.open(AppIdentity.webPage)
            }
            LinkButton {
                text: qsTr("Confidentialité")
                onClicked: AppIdentity.open(AppIdentity.privacyPage)
            }
        }
    }
}
