import QtQuick
import Quillary.Controls
import Quillary.Library

/// What can be done with a file of any shelf.
ShelfMenu {
    id: menu

    MenuItem {
        symbol: menu.star ? "star" : "star.fill"
        text: menu.star ? qsTr("Remove from Favorites") : qsTr("Add to Favorites")

        onTriggered: menu.shelf.setFavorite(menu.urls, !menu.star)
    }
    MenuItem {
        symbol: "pencil"
        text: qsTr("Rename…")
        visible: !menu.several

        onTriggered: menu.renameRequested()
    }
    MenuItem {
        id: mover

        symbol: "folder"
        text: qsTr("Move to…")

        onTriggered: menu.moveRequested(mover)
    }
}
