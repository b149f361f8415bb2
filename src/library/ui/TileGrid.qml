pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// The tiles of a list of images, in columns of 76 to 110 points, 10 apart. The arrow keys move, Return opens the menu, F2
/// renames.
GridView {
    id: grid

    required property PanelModel panel
    required property ItemListModel items
    readonly property int columns: Math.max(1, Math.floor(width / 86))
    readonly property real pictureWidth: Math.min(110, Math.floor(width / columns) - 10)
    /// The chosen image's URL.
    property string selected: ""

    signal menuRequested(tile: LibraryTile, at: point)
    signal renameRequested(tile: LibraryTile)

    function tileAt(row: int): LibraryTile {
        return itemAtIndex(row) as LibraryTile;
    }
    function openMenu() {
        const tile = currentItem as LibraryTile;
        if (tile)
            menuRequested(tile, Qt.point(tile.pictureWidth / 2, tile.pictureHeight / 2));
    }

    Accessible.name: qsTr("Images")
    Accessible.role: Accessible.List
    activeFocusOnTab: count > 0
    boundsBehavior: Flickable.StopAtBounds
    bottomMargin: 8
    cacheBuffer: 240
    cellHeight: Math.round(pictureWidth * 0.9) + 32
    cellWidth: Math.floor(pictureWidth) + 10
    clip: true
    leftMargin: 0
    model: items
    pixelAligned: true
    topMargin: 3

    Keys.onMenuPressed: openMenu()
    Keys.onPressed: event => {
        if (event.key === Qt.Key_F2 && currentItem) {
            renameRequested(currentItem as LibraryTile);
            event.accepted = true;
        }
    }
    Keys.onReturnPressed: openMenu()
    Keys.onSpacePressed: {
        const tile = currentItem as LibraryTile;
        if (tile)
            selected = selected === tile.url ? "" : tile.url;
    }

    delegate: LibraryTile {
        required property int index

        focusShown: grid.activeFocus && GridView.isCurrentItem
        isSelected: grid.selected === url
        pictureWidth: grid.pictureWidth

        onFileRequested: request => request.url = grid.panel.dragFileUrl(url)
        onMenuRequested: at => {
            grid.currentIndex = index;
            grid.menuRequested(this, at);
        }
        onTapped: {
            grid.forceActiveFocus(Qt.MouseFocusReason);
            grid.currentIndex = index;
            grid.selected = url;
        }
    }

    T.ScrollBar.vertical: ScrollBar {
        visible: grid.contentHeight > grid.height
    }
}
