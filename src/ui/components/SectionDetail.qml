// Not a bound-component file: the screens declared here are handed to the scaffold,
// which instantiates them in its own context.
import QtQuick
import QtQuick.Controls
import Quillon

// The detail area: the section on screen in its scaffold, the journal as its own scrolling
// list, or the message of a Mac without a battery. Each section's screen is one of the
// components below.
Item {
    id: root

    required property MainWindowController controller

    readonly property SectionState current: root.controller.current

    function screenFor(section) {
        switch (section) {
        case "overview":
            return overviewScreen
        case "diagnostics":
            return diagnosticsScreen
        case "hardware":
            return hardwareScreen
        case "battery":
            return batteryScreen
        case "storage":
            return storageScreen
        default:
            return deviceScreen
        }
    }

    Loader {
        id: loader

        anchors.fill: parent
        sourceComponent: root.current.section === "history" ? journalPage
                       : root.current.showsNoBatteryMessage ? noBatteryMessage
                       : scaffold
    }

    Component {
        id: scaffold

        SectionScaffold {
            objectName: "scaffold"
            section: root.current.section
            isLoading: root.current.isLoading
            failure: root.current.failure
            isEmpty: root.current.isEmpty
            content: root.screenFor(root.current.section)
            contentScrolls: root.screenFor(root.current.section) === deviceScreen
        }
    }

    Component {
        id: noBatteryMessage

        MessageView {
            objectName: "noBatteryView"
            symbol: "powerplug"
            title: qsTr("Aucune batterie")
            message: qsTr("Ce Mac est alimenté uniquement sur secteur.")
            tint: Theme.secondary
        }
    }

    Component {
        id: journalPage

        HistoryView {
            objectName: "journalPage"
            controller: root.controller
        }
    }

    Component {
        id: overviewScreen

        OverviewView {
            controller: root.controller
        }
    }
    Component {
        id: diagnosticsScreen

        DiagnosticsView {
            controller: root.controller
        }
    }
    Component {
        id: hardwareScreen

        HardwareView {
            controller: root.controller
        }
    }
    Component {
        id: batteryScreen

        BatteryView {
            controller: root.controller
        }
    }
    Component {
        id: storageScreen

        StorageView {
            controller: root.controller
        }
    }
    Component {
        id: deviceScreen

        DeviceListView {
            objectName: "deviceList"
            nodes: root.current.devices
        }
    }
}
