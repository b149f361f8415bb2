pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// The Images shelf: filters, folders, and a grid of tiles that can be dragged out.
Item {
    id: library

    required property PanelModel model
    /// Recent is shown instead of the shelf.
    property bool showsRecent: false
    readonly property bool filtered: model.searchText.trim().length > 0 || model.favoritesOnly || model.formatFilter.length > 0
    readonly property bool empty: grid.count === 0 && (model.libraryLoaded || showsRecent)
    readonly property bool nothingSaved: empty && !filtered && !showsRecent && model.imagesCount === 0 && model.filterKind === "all"

    function pick(kind: int, path: string) {
        showsRecent = kind === FolderListModel.Recent;
        switch (kind) {
        case FolderListModel.All:
            model.selectAll();
            break;
        case FolderListModel.Unfiled:
            model.selectUnfiled();
            break;
        case FolderListModel.Collection:
            model.selectCollection(path);
            break;
        case FolderListModel.BuiltIn:
            model.selectBuiltIn(path);
            break;
        }
    }

    FilterBar {
        id: filters

        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        model: library.model
        showsRecent: library.showsRecent

        onNewCollectionRequested: newCollection.ask("")
        onPicked: (kind, path) => library.pick(kind, path)
    }
    ContextBar {
        id: context

        anchors.left: filters.left
        anchors.right: filters.right
        anchors.top: filters.bottom
        anchors.topMargin: visible ? 4 : 0
        filtered: library.filtered && !library.showsRecent
        matches: grid.count
        model: library.model
        showsRecent: library.showsRecent

        onPicked: (kind, path) => library.pick(kind, path)
    }
    FolderGrid {
        id: folders

        anchors.left: filters.left
        anchors.right: filters.right
        anchors.rightMargin: -6
        anchors.top: context.bottom
        anchors.topMargin: Theme.gap
        height: visible ? implicitHeight : 0
        mostRows: library.height > 520 ? 5 : 3
        panel: library.model
        showsRecent: library.showsRecent
        visible: library.model.searchText.trim().length === 0 && library.model.libraryLoaded

        onPicked: (kind, path) => library.pick(kind, path)
    }
    TileGrid {
        id: grid

        objectName: "tiles"
        anchors.bottom: note.top
        anchors.left: filters.left
        anchors.right: filters.right
        anchors.rightMargin: -10
        anchors.top: folders.bottom
        anchors.topMargin: folders.visible ? 0 : 4
        items: library.showsRecent ? library.model.recentItems : library.model.visibleLibrary
        panel: library.model

        onMenuRequested: (tile, at) => library.openMenu(tile, at)
        onRenameRequested: tile => library.rename(tile)
    }
    Message {
        anchors.fill: grid
        hint: library.nothingSaved ? qsTr("Already have a collection? Point the library at that drive in Settings and move your files into Library/Images. Folders you make there become collections.") : ""
        line: library.nothingSaved ? qsTr("Drop a folder of images here, or save the one you pasted") : library.emptyLine
        symbol: library.nothingSaved ? "square.grid.2x2" : library.showsRecent ? "clock.arrow.circlepath" : library.filtered ? "magnifyingglass" : "folder"
        title: library.nothingSaved ? qsTr("Nothing saved yet") : library.filtered && !library.showsRecent ? qsTr("Nothing matches") : qsTr("Nothing here yet")
        visible: library.empty
    }
    readonly property string emptyLine: showsRecent ? qsTr("Everything you drag out is kept here") : filtered ? "" : qsTr("Images you move here will show up")

    NoteLine {
        id: note

        anchors.bottom: parent.bottom
        anchors.left: filters.left
        anchors.right: filters.right
        height: visible ? 26 : 0
        symbol: "checkmark.circle.fill"
        text: library.model.librarySaveNote
    }

    function openMenu(tile: LibraryTile, at: point) {
        menu.url = tile.url;
        menu.name = tile.name;
        menu.star = tile.star;
        menu.isBuiltIn = tile.isBuiltIn;
        menu.isRecent = showsRecent;
        const here = library.mapFromItem(tile, at.x, at.y);
        menu.popup(library, here.x, here.y);
    }
    function rename(tile: LibraryTile) {
        if (tile.isBuiltIn || showsRecent)
            return;
        renaming.url = tile.url;
        renaming.ask(tile.name);
    }

    TileMenu {
        id: menu

        model: library.model

        onMoveRequested: {
            targets.url = url;
            targets.x = x;
            targets.y = y;
            targets.open();
        }
        onRenameRequested: {
            renaming.url = url;
            renaming.ask(name);
        }
    }
    FolderMenu {
        id: targets

        property string url: ""

        content: FolderListModel.Targets
        model: library.model

        onPicked: (kind, path) => library.model.moveItem(url, path)
    }
    NameSheet {
        id: newCollection

        objectName: "newCollection"
        action: qsTr("Create")
        footnote: qsTr("Collections are folders inside your library, so you can also see them in the Finder.")
        title: qsTr("New collection")

        onNamed: name => library.model.createCollection(name)
    }
    NameSheet {
        id: renaming

        property string url: ""

        action: qsTr("Rename")
        title: qsTr("Rename image")

        onNamed: name => library.model.renameItem(url, name)
    }
}
