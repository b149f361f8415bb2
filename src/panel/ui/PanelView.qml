import QtQuick
import Quillary.Controls
import Quillary.Drag
import Quillary.Model
import Quillary.Panel

/// The root view: the tabs on top, the Import tab or the Library below. All of it takes drops.
Rectangle {
    id: panel

    required property PanelModel model
    /// The desktop's manners, kept up to date by the owner of the view.
    property bool dark: true
    property bool reducedMotion: false
    property bool keepsWindowsAbove: true
    property bool showingSettings: false
    readonly property bool isDropTargeted: dropTarget.targeted

    color: Theme.window

    onShowingSettingsChanged: {
        if (showingSettings)
            settings.setSource("qrc:/qt/qml/Quillary/Library/SettingsView.qml", {
                "history": panel.model.pasteHistory,
                "keepsWindowsAbove": panel.keepsWindowsAbove,
                "parent": panel,
                "settings": panel.model.settings
            });
        else
            (settings.item as Sheet)?.close();
    }

    Binding {
        property: "dark"
        target: Theme
        value: panel.dark
    }
    Binding {
        property: "reducedMotion"
        target: Theme
        value: panel.reducedMotion
    }
    Binding {
        property: "editor"
        target: Wording
        value: panel.model.settings.editorName
    }

    PanelDropTarget {
        id: dropTarget

        anchors.fill: parent
        objectName: "dropTarget"
    }

    Item {
        id: header

        height: Theme.headerHeight
        width: parent.width

        SegmentedControl {
            anchors.left: parent.left
            anchors.leftMargin: Theme.margin
            anchors.verticalCenter: parent.verticalCenter
            currentIndex: panel.model.tab
            labels: [qsTr("Import"), qsTr("Library")]
            padding: 12
            spokenName: qsTr("Tab")

            onActivated: index => panel.model.tab = index
        }
        IconButton {
            anchors.right: parent.right
            anchors.rightMargin: Theme.margin
            anchors.verticalCenter: parent.verticalCenter
            help: qsTr("Settings")
            objectName: "settings"
            symbol: "gearshape"

            onClicked: panel.showingSettings = true
        }
        Divider {
            anchors.bottom: parent.bottom
            width: parent.width
        }
    }

    ImportTab {
        anchors.bottom: notices.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        enabled: visible
        model: panel.model
        targeted: panel.isDropTargeted
        visible: panel.model.tab === PanelModel.Tab.Intake
    }
    Loader {
        id: library

        /// Made when it is first shown, kept from then on.
        readonly property bool wanted: panel.model.tab === PanelModel.Tab.Library

        function make() {
            if (wanted && !item)
                setSource("qrc:/qt/qml/Quillary/Library/LibraryShelvesView.qml", {
                    "model": panel.model
                });
        }

        anchors.bottom: notices.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        enabled: wanted
        visible: wanted

        onWantedChanged: make()
        Component.onCompleted: make()
    }
    /// What concerns every tab and shelf.
    Column {
        id: notices

        anchors.bottom: parent.bottom
        width: parent.width

        UnfinishedBar {
            queue: panel.model.importQueue
            width: notices.width
            work: panel.model.unfinishedWork
        }
        ImportProgress {
            queue: panel.model.importQueue
            width: notices.width
        }
        ImportSummary {
            queue: panel.model.importQueue
            width: notices.width
        }
    }
    /// Asks for folders and files where the desktop has no chooser; made when it is first needed.
    Loader {
        id: ownChooser

        readonly property FolderChooser chooser: panel.model.ownChooser
        readonly property bool asked: chooser?.active ?? false

        objectName: "chooserLoader"

        onAskedChanged: if (asked && !item)
            setSource("qrc:/qt/qml/Quillary/Library/ChooserSheet.qml", {
                "chooser": chooser
            })
    }
    /// Holds the Settings sheet while it is open.
    Loader {
        id: settings

        objectName: "settingsSheetLoader"
    }
    Connections {
        function onClosed() {
            panel.showingSettings = false;
            settings.source = "";
        }

        ignoreUnknownSignals: true
        target: settings.item
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: 2
        border.color: Theme.accent
        border.width: 2
        color: "transparent"
        radius: Theme.stageRadius
        visible: panel.isDropTargeted && library.wanted
    }
}
