pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Blocks
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// The Blocks shelf: compound clips as tiles, and what to do with the selected one.
ShelfView {
    id: view

    required property PanelModel model
    readonly property BlocksShelf blocks: model.blocksShelf
    readonly property bool posterSelected: blocks.selectedDetails.poster.length > 0

    objectName: "blocksView"
    emptyHint: qsTr("drag it from the browser onto this panel, then ⌘Z to undo the compound.")
    emptyLine: qsTr("In Final Cut: select your clips, press ⌥G to make a compound clip,")
    emptySymbol: "square.3.layers.3d"
    emptyTitle: qsTr("No blocks yet")
    everything: qsTr("folders")
    grid.objectName: "blockTiles"
    grid.aspect: 0.58
    grid.captionHeight: 48
    grid.leastWidth: 96
    grid.mostWidth: 150
    hint: shelf.count > 0 ? qsTr("Drag a block onto the timeline, then ⇧⌘G to break it apart") : qsTr("Drag a compound clip from Final Cut’s browser")
    newCollectionFootnote: qsTr("Blocks dropped in while this collection is selected are filed here.")
    newCollectionTitle: qsTr("New block collection")
    offersPlaces: false
    renameTitle: qsTr("Rename block")
    shelf: blocks

    afterStar: IconButton {
        help: qsTr("New block collection")
        symbol: "folder.badge.plus"

        onClicked: view.askForCollection()
    }
    delegate: BlockTile {
        id: tile

        blocks: view.blocks
        grid: view.grid
        height: view.grid.cellHeight - view.grid.gap
        width: view.grid.tileWidth

        onMediaRequested: view.showMedia(tile.url)
    }
    footer: [
        ProgressBar {
            height: visible ? implicitHeight : 0
            spokenName: qsTr("Saving")
            value: view.blocks.saveProgress
            visible: view.blocks.saveProgress >= 0
            width: parent.width
        },
        Item {
            height: visible ? 20 : 0
            visible: view.shelf.selection.count > 0
            width: parent.width

            Badge {
                id: needs

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Needs Glidemark")
                visible: view.blocks.selectedDetails.usesGlidemark
            }
            Label {
                anchors.left: parent.left
                anchors.right: needs.visible ? needs.left : parent.right
                anchors.rightMargin: Theme.smallGap
                elide: Text.ElideRight
                height: parent.height
                secondary: true
                small: true
                text: qsTr("Drag a block onto the timeline, then ⇧⌘G to break it apart")
            }
        }
    ]
    menu: BlockMenu {
        id: menu

        actions: view.model.fileActions
        blocks: view.blocks
        hasPoster: view.posterSelected
        shelf: view.shelf

        onExportRequested: view.askForExport(menu.url, menu.name)
        onMediaRequested: view.showMedia(menu.url)
    }
    selectionActions: Button {
        help: Wording.forSystem(qsTr("Screenshot the Final Cut viewer, then click this (or press ⌘V)"))
        spokenName: view.posterSelected ? qsTr("Replace poster") : qsTr("Paste poster frame")
        symbol: "photo.badge.plus"
        text: view.width < 370 ? "" : spokenName
        visible: view.blocks.hasSelectedBlock

        onClicked: view.blocks.pastePoster()
    }

    function askForExport(url: string, name: string) {
        exporting.ask(url, name);
    }
    function showMedia(url: string) {
        mediaSheet.showMedia(url);
    }

    ExportSheet {
        id: exporting

        actions: view.menu.actions
        job: view.blocks.exporting
    }
    MediaSheet {
        id: mediaSheet

        actions: view.menu.actions
        care: view.blocks.care
        job: view.blocks.exporting
    }
}
