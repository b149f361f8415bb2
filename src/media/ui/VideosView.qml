pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Media
import Quillary.Model

/// The Videos shelf: clips as tiles whose frames follow the pointer.
ShelfView {
    id: videos

    required property PanelModel model

    emptyHint: Wording.forSystem(qsTr("You can also put files straight into Library/Videos in the Finder."))
    emptyLine: qsTr("Drop clips here, or drag a single clip out of Final Cut’s browser.")
    emptySymbol: "film.stack"
    emptyTitle: qsTr("No videos yet")
    everything: qsTr("folders")
    grid.aspect: 0.5625
    grid.leastWidth: 136
    grid.mostWidth: 230
    hint: nothingSaved ? qsTr("Drop video files, or drag one clip from Final Cut’s browser") : qsTr("Drag a clip onto the timeline")
    newCollectionFootnote: qsTr("Videos dropped in while this collection is selected are filed here.")
    newCollectionTitle: qsTr("New video collection")
    renameTitle: qsTr("Rename video")
    shelf: model.videoShelf

    delegate: VideoTile {
        grid: videos.grid
        videoShelf: videos.model.videoShelf
    }
    menu: FileMenu {
        actions: videos.model.fileActions
        shelf: videos.shelf
    }
}
