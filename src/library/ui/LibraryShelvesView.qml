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
        details: [`${shelves.model.imagesCount}`, `${shelves.model.videosCount}`, `${shelves.model.audioCount}`, `${shelves.model.blocksCount}`]
        fill: true
        labels: [qsTr("Images"), qsTr("Videos"), qsTr("Audio"), qsTr("Blocks")]
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
    }
    LibraryView {
        anchors.fill: body
        enabled: visible
        model: shelves.model
        visible: shelves.model.libraryKind === PanelModel.LibraryKind.Images
    }
    PlainShelf {
        anchors.fill: body
        count: shelves.model.videosCount
        folder: "Library/Videos"
        hint: qsTr("Drop clips here, or drag a single clip out of Final Cut’s browser. You can also put files straight into Library/Videos in the Finder.")
        note: shelves.model.videoNote
        symbol: "film.stack"
        title: qsTr("No videos yet")
        visible: shelves.model.libraryKind === PanelModel.LibraryKind.Videos
    }
    PlainShelf {
        anchors.fill: body
        count: shelves.model.audioCount
        folder: "Library/Audio"
        hint: qsTr("Drop sound effects here, or point Library/Audio at the folders you already keep them in — subfolders become collections.")
        note: shelves.model.audioNote
        symbol: "waveform"
        title: qsTr("No audio yet")
        visible: shelves.model.libraryKind === PanelModel.LibraryKind.Audio
    }
    PlainShelf {
        anchors.fill: body
        count: shelves.model.blocksCount
        folder: "Library/Blocks"
        hint: qsTr("In Final Cut: select your clips, press ⌥G to make a compound clip, drag it from the browser onto this panel, then ⌘Z to undo the compound.")
        note: shelves.model.blockNote
        symbol: "square.3.layers.3d"
        title: qsTr("No blocks yet")
        visible: shelves.model.libraryKind === PanelModel.LibraryKind.Blocks
    }
    ImportProgress {
        id: progress

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        model: shelves.model
    }
}
