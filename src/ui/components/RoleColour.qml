pragma ComponentBehavior: Bound
import QtQuick
import Quillon

// The colour of a role named by the presentation rules ("green", "orange", "red", "accent",
// "secondary", "tertiary", "primary"), following the appearance as it changes.
QtObject {
    id: root

    required property string role

    readonly property color value: root.role === "green" ? Theme.green
                                 : root.role === "orange" ? Theme.orange
                                 : root.role === "red" ? Theme.red
                                 : root.role === "accent" ? Theme.accent
                                 : root.role === "secondary" ? Theme.secondary
                                 : root.role === "tertiary" ? Theme.tertiary
                                 : Theme.primary
}
