pragma ComponentBehavior: Bound
import QtQuick
import Quillon

// Makes its parent a button for the keyboard and VoiceOver as well as for the pointer: Tab
// reaches it, Space or Return activates it, VoiceOver reads its name as a button, and the
// focus ring follows the parent's rounded shape. Fill the parent with it.
Item {
    id: root

    // What VoiceOver reads.
    property string name
    // The corner radius of the shape the focus ring follows.
    property real radius: 0
    // False for a shape that leads nowhere: it is read but never reached with Tab.
    property bool actionable: true

    signal activated

    activeFocusOnTab: root.actionable
    Accessible.role: root.actionable ? Accessible.Button : Accessible.StaticText
    Accessible.name: root.name
    Accessible.focusable: root.actionable
    Accessible.onPressAction: root.activate()

    function activate() {
        if (root.actionable)
            root.activated()
    }

    Keys.onPressed: event => {
        if (event.key === Qt.Key_Space || event.key === Qt.Key_Return || event.key === Qt.Key_Enter) {
            root.activate()
            event.accepted = true
        }
    }

    MouseArea {
        anchors.fill: parent
        enabled: root.actionable
        onClicked: root.activate()
    }

    Rectangle {
        objectName: "focusRing"
        anchors.fill: parent
        anchors.margins: -3
        radius: root.radius + 3
        color: "transparent"
        border.width: 3
        border.color: Theme.faded(Theme.accent, 0.55)
        visible: root.activeFocus
    }
}
