pragma ComponentBehavior: Bound
import QtQuick
import Quillon

// A symbol (named as the records and screens name it) drawn in one colour, `size` points square.
Item {
    id: root

    required property string name
    property color color: Theme.primary
    property real size: 16

    implicitWidth: root.size
    implicitHeight: root.size

    Image {
        anchors.fill: parent
        sourceSize.width: Math.ceil(root.size * 2)
        sourceSize.height: Math.ceil(root.size * 2)
        source: root.name.length > 0 ? Theme.symbolSource(root.name, root.color) : ""
        fillMode: Image.PreserveAspectFit
        smooth: true
        mipmap: true
    }
}
