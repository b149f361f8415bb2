pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// The Blocks shelf.
ShelfView {
    id: blocks

    required property PanelModel model

    emptyHint: qsTr("drag it from the browser onto this panel, then ⌘Z to undo the compound.")
    emptyLine: qsTr("In Final Cut: select your clips, press ⌥G to make a compound clip,")
    emptySymbol: "square.3.layers.3d"
    emptyTitle: qsTr("No blocks yet")
    everything: qsTr("folders")
    grid.captionHeight: 34
    grid.list: true
    hint: qsTr("Drag a compound clip from Final Cut’s browser")
    newCollectionFootnote: qsTr("Blocks dropped in while this collection is selected are filed here.")
    newCollectionTitle: qsTr("New block collection")
    offersPlaces: false
    renameTitle: qsTr("Rename block")
    shelf: model.blocksShelf

    afterStar: IconButton {
        help: qsTr("New block collection")
        symbol: "folder.badge.plus"

        onClicked: blocks.askForCollection()
    }
    delegate: FileRow {
        grid: blocks.grid
        symbol: "square.3.layers.3d"
    }
    menu: FileMenu {
        shelf: blocks.shelf
    }
}
