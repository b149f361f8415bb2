import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// What can be done with one image of the browser.
ShelfMenu {
    id: menu

    required property PanelModel model
    readonly property bool isRecent: shelf.place === Shelf.Place.Recent

    actions: model.fileActions
    removeLabel: isRecent ? qsTr("Remove from Recent") : qsTr("Remove from Library")
    extras: MenuItem {
        id: mover

        symbol: "folder"
        text: qsTr("Move to…")
        visible: !menu.isBuiltIn && !menu.isRecent

        onTriggered: menu.moveRequested(mover)
    }

    MenuItem {
        symbol: menu.star ? "star" : "star.fill"
        text: menu.star ? qsTr("Remove from Favorites") : qsTr("Add to Favorites")

        onTriggered: menu.shelf.setFavorite(menu.urls, !menu.star)
    }
    MenuItem {
        symbol: "scissors"
        text: qsTr("Remove Background…")
        visible: !menu.several

        onTriggered: menu.model.editItem(menu.url)
    }
    Menu {
        title: qsTr("Rotate & Flip")

        MenuItem {
            symbol: "rotate.left"
            text: qsTr("Rotate Left")

            onTriggered: menu.model.imagesShelf.transform(menu.urls, "rotateLeft")
        }
        MenuItem {
            symbol: "rotate.right"
            text: qsTr("Rotate Right")

            onTriggered: menu.model.imagesShelf.transform(menu.urls, "rotateRight")
        }
        MenuItem {
            symbol: "arrow.left.and.right.righttriangle.left.righttriangle.right"
            text: qsTr("Flip Horizontal")

            onTriggered: menu.model.imagesShelf.transform(menu.urls, "flipHorizontal")
        }
        MenuItem {
            symbol: "arrow.up.and.down.righttriangle.up.righttriangle.down"
            text: qsTr("Flip Vertical")

            onTriggered: menu.model.imagesShelf.transform(menu.urls, "flipVertical")
        }
    }
    MenuItem {
        symbol: "pencil"
        text: qsTr("Rename…")
        visible: !menu.isBuiltIn && !menu.several

        onTriggered: menu.renameRequested()
    }
    MenuItem {
        symbol: "square.and.arrow.down"
        text: qsTr("Save to My Library")
        visible: menu.isBuiltIn

        onTriggered: menu.model.imagesShelf.saveBuiltIn(menu.url)
    }
}
