pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Window

// Where a merged title bar runs (macOS), a strip that acts as one: dragging it moves the
// window, a double click does what the user set for title bars. Inactive, it lets
// everything through. Place it under the controls of the strip.
Item {
    id: root

    // The window's chrome when its title bar is merged; null otherwise.
    property QtObject chrome: null

    TapHandler {
        enabled: root.chrome !== null
        gesturePolicy: TapHandler.DragThreshold
        onDoubleTapped: root.chrome.titleBarDoubleClicked()
    }
    DragHandler {
        enabled: root.chrome !== null
        target: null
        onActiveChanged: {
            if (active)
                root.Window.window.startSystemMove()
        }
    }
}
