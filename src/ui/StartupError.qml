pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// Shown instead of the main window when the recorded Mac to show cannot be read.
QuillonWindow {
    id: root

    required property string message

    title: AppIdentity.name
    width: 560
    height: 320
    visible: true

    MessageView {
        anchors.fill: parent
        symbol: "exclamationmark.triangle"
        title: qsTr("Lecture impossible")
        message: root.message
        tint: Theme.orange
    }
}
