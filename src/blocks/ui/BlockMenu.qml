import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// What can be done with a block.
ShelfMenu {
    id: menu

    required property BlocksShelf blocks
    /// Whether the block has a poster.
    property bool hasPoster: false

    signal exportRequested
    signal mediaRequested

    removeLabel: several ? qsTr("Delete %n blocks", "", urls.length) : qsTr("Delete")

    extras: [
        MenuItem {
            symbol: "pencil"
            text: qsTr("Rename…")
            visible: !menu.several

            onTriggered: menu.renameRequested()
        },
        MenuItem {
            symbol: "square.and.arrow.up"
            text: qsTr("Export for…")
            visible: !menu.several

            onTriggered: menu.exportRequested()
        },
        MenuItem {
            symbol: "film.stack"
            text: qsTr("Media…")
            visible: !menu.several

            onTriggered: menu.mediaRequested()
        }
    ]

    MenuItem {
        symbol: menu.star ? "star" : "star.fill"
        text: menu.star ? qsTr("Remove from Favorites") : qsTr("Add to Favorites")

        onTriggered: menu.shelf.setFavorite(menu.urls, !menu.star)
    }
    MenuItem {
        symbol: "photo.badge.plus"
        text: menu.hasPoster ? qsTr("Replace poster frame") : qsTr("Paste poster frame")
        visible: !menu.several

        onTriggered: menu.blocks.pastePoster(menu.url)
    }
    MenuItem {
        symbol: "xmark.circle.fill"
        text: qsTr("Remove poster frame")
        visible: menu.hasPoster && !menu.several

        onTriggered: menu.blocks.removePoster(menu.url)
    }
    MenuItem {
        id: mover

        symbol: "folder"
        text: qsTr("Move to…")

        onTriggered: menu.moveRequested(mover)
    }
}
