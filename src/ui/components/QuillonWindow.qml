pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// A window of the application: its background and the palette of its standard controls
// (text fields, buttons, menus, tooltips) follow the light or dark appearance of the theme.
ApplicationWindow {
    id: root

    color: Theme.windowBackground
    palette.window: Theme.controlColours.window
    palette.windowText: Theme.controlColours.windowText
    palette.base: Theme.controlColours.base
    palette.alternateBase: Theme.controlColours.alternateBase
    palette.text: Theme.controlColours.text
    palette.placeholderText: Theme.controlColours.placeholderText
    palette.button: Theme.controlColours.button
    palette.buttonText: Theme.controlColours.buttonText
    palette.highlight: Theme.controlColours.highlight
    palette.highlightedText: Theme.controlColours.highlightedText
    palette.toolTipBase: Theme.controlColours.toolTipBase
    palette.toolTipText: Theme.controlColours.toolTipText
    palette.link: Theme.controlColours.link
    palette.light: Theme.controlColours.light
    palette.midlight: Theme.controlColours.midlight
    palette.mid: Theme.controlColours.mid
    palette.dark: Theme.controlColours.dark
    palette.shadow: Theme.controlColours.shadow
}
