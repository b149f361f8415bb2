pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// The Images shelf: filters, folders, and a grid of tiles that can be dragged out.
ShelfView {
    id: library

    required property PanelModel model

    emptyHint: qsTr("Already have a collection? Point the library at that drive in Settings and move your files into Library/Images. Folders you make there become collections.")
    emptyLine: qsTr("Drop a folder of images here, or save the one you pasted")
    emptyPlaceLine: qsTr("Images you move here will show up")
    emptySymbol: "square.grid.2x2"
    emptyTitle: qsTr("Nothing saved yet")
    newCollectionFootnote: Wording.forSystem(qsTr("Collections are folders inside your library, so you can also see them in the Finder."))
    newCollectionTitle: qsTr("New collection")
    removeLabel: qsTr("Remove")
    renameTitle: qsTr("Rename image")
    shelf: model.imagesShelf

    afterStar: [
        FormatChips {
            shelf: library.model.imagesShelf
            y: 2
        },
        IconButton {
            id: more

            help: qsTr("More")
            symbol: "ellipsis.circle"

            onClicked: moreMenu.open()

            Menu {
                id: moreMenu

                MenuItem {
                    enabled: library.grid.count > 0
                    symbol: "checkmark.circle.fill"
                    text: qsTr("Select All")

                    onTriggered: library.shelf.selection.selectAll()
                }
            }
        }
    ]
    emptyActions: Button {
        anchors.horizontalCenter: parent?.horizontalCenter
        text: qsTr("Browse %n built-in icons", "", library.model.imagesShelf.builtInCount)
        visible: library.nothingSaved && library.model.imagesShelf.builtInCount > 0

        onClicked: library.shelf.pick(Shelf.Place.BuiltIn, library.model.imagesShelf.builtInSets[0])
    }
    delegate: LibraryTile {
        grid: library.grid
    }
    menu: ImageMenu {
        model: library.model
        shelf: library.shelf
    }
}
