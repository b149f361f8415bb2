pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// The Library tab: the shelf picker across the top, below it the shelf.
Item {
    id: shelves

    required property PanelModel model

    AliasBanner {
        id: banner

        aliases: shelves.model.blockedAliases
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.top: parent.top
        anchors.topMargin: visible ? Theme.margin : 0
    }
    SegmentedControl {
        id: picker

        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.top: banner.bottom
        anchors.topMargin: Theme.margin
        currentIndex: shelves.model.libraryKind
        details: [`${shelves.model.imagesShelf.count}`, `${shelves.model.videoShelf.count}`, `${shelves.model.audioShelf.count}`, `${shelves.model.blocksShelf.count}`]
        fill: true
        labels: [shelves.model.imagesShelf.title, shelves.model.videoShelf.title, shelves.model.audioShelf.title, shelves.model.blocksShelf.title]
        spokenName: qsTr("Shelf")
        width: Math.min(parent.width - 2 * Theme.margin - Theme.smallGap - importer.width, 440)

        onActivated: index => shelves.model.libraryKind = index
    }
    ImportButton {
        id: importer

        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.top: picker.top
        brief: shelves.width < picker.wholeWidth + wholeWidth + Theme.smallGap + 2 * Theme.margin
        enabled: !shelves.model.importQueue.importing
        model: shelves.model
        objectName: "importButton"
    }
    Item {
        id: body

        anchors.bottom: stagedLine.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: picker.bottom
        anchors.topMargin: Theme.gap

        LibraryView {
            anchors.fill: parent
            enabled: visible
            model: shelves.model
            visible: shelves.model.libraryKind === PanelModel.LibraryKind.Images
        }
        OtherShelf {
            kind: PanelModel.LibraryKind.Videos
            view: "qrc:/qt/qml/Quillary/Media/VideosView.qml"
        }
        OtherShelf {
            kind: PanelModel.LibraryKind.Audio
            view: "qrc:/qt/qml/Quillary/Media/AudioView.qml"
        }
        OtherShelf {
            kind: PanelModel.LibraryKind.Blocks
            view: "qrc:/qt/qml/Quillary/Blocks/BlocksView.qml"
        }
    }
    StagedLine {
        id: stagedLine

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        model: shelves.model
    }
    /// A shelf of another module: made when it is first shown, kept from then on.
    component OtherShelf: Loader {
        id: loader

        required property int kind
        required property url view
        readonly property bool wanted: shelves.model.libraryKind === kind

        function make() {
            if (wanted && !item)
                setSource(view, {
                    "model": shelves.model
                });
        }

        anchors.fill: parent
        enabled: wanted
        visible: wanted

        onWantedChanged: make()
        Component.onCompleted: make()
    }
}
