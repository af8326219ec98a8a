pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// A window of the application: its background and the palette of its standard controls
// (text fields, buttons, menus, tooltips) follow the light or dark appearance of the theme.
ApplicationWindow {
    id: root

    color: Theme.windowBackground
    palette.window: Theme.paletteColour("window")
    palette.windowText: Theme.paletteColour("windowText")
    palette.base: Theme.paletteColour("base")
    palette.alternateBase: Theme.paletteColour("alternateBase")
    palette.text: Theme.paletteColour("text")
    palette.placeholderText: Theme.paletteColour("placeholderText")
    palette.button: Theme.paletteColour("button")
    palette.buttonText: Theme.paletteColour("buttonText")
    palette.highlight: Theme.paletteColour("highlight")
    palette.highlightedText: Theme.paletteColour("highlightedText")
    palette.toolTipBase: Theme.paletteColour("toolTipBase")
    palette.toolTipText: Theme.paletteColour("toolTipText")
    palette.link: Theme.paletteColour("link")
    palette.light: Theme.paletteColour("light")
    palette.midlight: Theme.paletteColour("midlight")
    palette.mid: Theme.paletteColour("mid")
    palette.dark: Theme.paletteColour("dark")
    palette.shadow: Theme.paletteColour("shadow")
}
