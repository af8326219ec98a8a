pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// The brand block at the top of the sidebar: the application icon, name and version. A
// click opens the About window.
AbstractButton {
    id: root

    leftPadding: 14
    rightPadding: 14
    topPadding: 4
    bottomPadding: 4
    hoverEnabled: true
    background: null
    text: qsTr("À propos de Quillon")
    Accessible.name: text

    contentItem: RowLayout {
        spacing: 10

        AppIconView {
            shadowOpacity: 0.15
            Layout.preferredWidth: 30
            Layout.preferredHeight: 30
        }
        ColumnLayout {
            spacing: 1
            Layout.fillWidth: true

            Label {
                objectName: "brandName"
                text: AppIdentity.name
                color: Theme.primary
                font.pixelSize: 13
                font.weight: Font.DemiBold
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            Label {
                objectName: "brandVersion"
                text: AppIdentity.versionText
                color: Theme.secondary
                font.pixelSize: 10
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: 8
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
        }
    }
}
