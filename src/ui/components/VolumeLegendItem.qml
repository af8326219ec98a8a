pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quillon

// One item of a volume's legend: a 9-point dot in its colour, a title and a byte count.
RowLayout {
    id: root

    required property color dotColour
    required property string title
    required property string value

    spacing: 6

    Rectangle {
        implicitWidth: 9
        implicitHeight: 9
        radius: 4.5
        color: root.dotColour
    }
    Label {
        text: root.title
        color: Theme.primary
        font.pixelSize: Theme.callout
    }
    Label {
        objectName: "legendValue"
        text: root.value
        color: Theme.secondary
        font.pixelSize: Theme.callout
    }
}
