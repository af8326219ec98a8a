pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Quillon

// Every section screen sits in this scaffold, which shows exactly one of: the failure of the
// section's last load, the loading view (loading with nothing to show yet), the section's
// empty message, or the content in a scroll area padded 22 points. A refresh of a section
// that already shows content keeps the content on screen.
Item {
    id: root

    // The section's raw value ("usb"…).
    required property string section
    required property bool isLoading
    // Empty when the last load did not fail.
    required property string failure
    required property bool isEmpty
    // The section's own view.
    required property Component content
    // The view scrolls by itself (a list that makes only the rows on screen): it fills the
    // scaffold instead of sitting in the scaffold's scroll area.
    property bool contentScrolls: false

    readonly property int displayState: Presentation.scaffoldState(root.isLoading, root.failure, root.isEmpty)

    // A new section starts at the top of its own scroll area.
    onSectionChanged: {
        contentLoader.active = false
        contentLoader.active = Qt.binding(() => !root.contentScrolls && root.displayState === Presentation.Content)
        scrollingLoader.active = false
        scrollingLoader.active = Qt.binding(() => root.contentScrolls && root.displayState === Presentation.Content)
        scroll.contentItem.contentY = 0
    }

    MessageView {
        objectName: "failureView"
        anchors.fill: parent
        visible: root.displayState === Presentation.Failure
        symbol: "exclamationmark.triangle"
        title: qsTr("Lecture impossible")
        message: root.failure
        tint: Theme.orange
    }

    LoadingView {
        objectName: "loadingView"
        anchors.fill: parent
        visible: root.displayState === Presentation.Loading
    }

    MessageView {
        objectName: "emptyView"
        anchors.fill: parent
        visible: root.displayState === Presentation.Empty
        symbol: Presentation.sectionSymbol(root.section)
        title: qsTr("Rien à afficher")
        message: Presentation.sectionEmptyMessage(root.section)
        tint: Theme.secondary
    }

    ScrollView {
        id: scroll

        objectName: "contentView"
        anchors.fill: parent
        visible: !root.contentScrolls && root.displayState === Presentation.Content
        contentWidth: scroll.availableWidth
        ScrollBar.vertical.policy: scroll.contentHeight > scroll.height ? ScrollBar.AlwaysOn : ScrollBar.AsNeeded
        ScrollBar.horizontal.policy: ScrollBar.AlwaysOff

        Item {
            implicitWidth: scroll.availableWidth
            implicitHeight: (contentLoader.item ? contentLoader.item.implicitHeight : 0) + 44

            Loader {
                id: contentLoader

                x: 22
                y: 22
                width: parent.width - 44
                active: !root.contentScrolls && root.displayState === Presentation.Content
                sourceComponent: root.content
            }
        }
    }

    Loader {
        id: scrollingLoader

        objectName: "scrollingContent"
        anchors.fill: parent
        active: root.contentScrolls && root.displayState === Presentation.Content
        sourceComponent: root.content
    }
}
