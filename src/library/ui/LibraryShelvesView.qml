pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// The Library tab: the shelf picker across the top, below it the shelf.
Item {
    id: shelves

    required property PanelModel model

    SegmentedControl {
        id: picker

        anchors.left: parent.left
        anchors.margins: Theme.margin
        anchors.top: parent.top
        currentIndex: shelves.model.libraryKind
        details: [`${shelves.model.imagesShelf.count}`, `${shelves.model.videoShelf.count}`, `${shelves.model.audioShelf.count}`, `${shelves.model.blocksShelf.count}`]
        fill: true
        labels: [shelves.model.imagesShelf.title, shelves.model.videoShelf.title, shelves.model.audioShelf.title, shelves.model.blocksShelf.title]
        spokenName: qsTr("Shelf")
        width: Math.min(parent.width - 2 * Theme.margin, 440)

        onActivated: index => shelves.model.libraryKind = index
    }
    Item {
        id: body

        anchors.bottom: progress.top
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
    ImportProgress {
        id: progress

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
