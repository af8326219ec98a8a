pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// A single-line text field drawn on the card surface with a visible frame in both
// appearances.
TextField {
    id: root

    color: Theme.primary
    placeholderTextColor: Theme.tertiary
    selectionColor: Theme.accent
    selectedTextColor: Theme.onAccent
    font.pixelSize: Theme.body
    leftPadding: 8
    rightPadding: 8
    topPadding: 6
    bottomPadding: 6

    background: Rectangle {
        implicitHeight: 28
        radius: 5
        color: Theme.cardSurface
        border.width: root.activeFocus ? 2 : 1
        border.color: root.activeFocus ? Theme.accent : Theme.faded(Theme.primary, 0.2)
    }
}
