pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Library
import Quillary.Model

/// The Videos shelf.
ShelfView {
    id: videos

    required property PanelModel model

    emptyHint: qsTr("You can also put files straight into Library/Videos in the Finder.")
    emptyLine: qsTr("Drop clips here, or drag a single clip out of Final Cut’s browser.")
    emptySymbol: "film.stack"
    emptyTitle: qsTr("No videos yet")
    everything: qsTr("folders")
    grid.captionHeight: 34
    grid.list: true
    hint: qsTr("Drag a clip onto the timeline")
    newCollectionFootnote: qsTr("Videos dropped in while this collection is selected are filed here.")
    newCollectionTitle: qsTr("New video collection")
    renameTitle: qsTr("Rename video")
    shelf: model.videoShelf

    delegate: FileRow {
        grid: videos.grid
        symbol: "film.stack"
    }
    menu: FileMenu {
        shelf: videos.shelf
    }
}
