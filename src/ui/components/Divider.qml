pragma ComponentBehavior: Bound
import QtQuick
import Quillon

// A thin horizontal separator line.
Rectangle {
    id: root

    implicitHeight: 1
    implicitWidth: 100
    color: Theme.separator
}
