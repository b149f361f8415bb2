pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// A shelf of the Library tab: what narrows it, its folders, its files, what can be done with them. A shelf gives its
/// texts, the delegate of its files (a ShelfItem) and their menu, and may add controls and a footer.
Item {
    id: view

    required property Shelf shelf
    /// The files' menu; `urls` and the like are set before it opens.
    required property ShelfMenu menu
    /// Makes a ShelfItem.
    required property Component delegate
    property alias grid: grid
    property alias offersPlaces: filters.offersPlaces
    property alias beforeStar: filters.beforeStar
    property alias afterStar: filters.afterStar
    property alias selectionActions: selectionBar.actions
    property alias emptyActions: message.actions
    /// Below the grid, above the selection bar.
    property alias footer: footer.data

    required property string emptySymbol
    required property string emptyTitle
    required property string emptyLine
    property string emptyHint: ""
    /// What an empty place other than the whole shelf says.
    property string emptyPlaceLine: qsTr("Files you move here will show up")
    property string everything: shelf.title
    property string removeLabel: qsTr("Delete")
    required property string renameTitle
    required property string newCollectionTitle
    required property string newCollectionFootnote
    /// A line below the grid while nothing is selected.
    property string hint: ""

    readonly property bool empty: grid.count === 0 && shelf.loaded
    readonly property bool nothingSaved: empty && !shelf.filtered && shelf.count === 0 && shelf.place === Shelf.Place.All

    function askForCollection() {
        newCollection.ask("");
    }

    FilterBar {
        id: filters

        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        shelf: view.shelf

        onNewCollectionRequested: view.askForCollection()
    }
    ContextBar {
        id: context

        anchors.left: filters.left
        anchors.right: filters.right
        anchors.top: filters.bottom
        anchors.topMargin: visible ? 4 : 0
        everything: view.everything
        shelf: view.shelf
    }
    NoteLine {
        id: note

        anchors.left: filters.left
        anchors.right: filters.right
        anchors.top: context.bottom
        anchors.topMargin: visible ? 5 : 0
        height: visible ? implicitHeight : 0
        ink: view.shelf.noteIsProblem ? Theme.warning : Theme.good
        symbol: view.shelf.noteIsProblem ? "exclamationmark.triangle.fill" : "checkmark.circle.fill"
        text: view.shelf.note
    }
    /// Over the head of the grid, and moves with it.
    Item {
        anchors.left: filters.left
        anchors.right: filters.right
        anchors.rightMargin: -Theme.smallGap
        anchors.top: grid.top
        clip: true
        height: Math.max(0, Math.min(folders.y + folders.height, grid.height))
        z: 1

        FolderGrid {
            id: folders

            height: implicitHeight
            mostRows: view.height > 520 ? 5 : 3
            shelf: view.shelf
            visible: view.shelf.loaded && (view.shelf.search.trim().length > 0 ? count > 0 : !(view.nothingSaved && view.shelf.collections.length === 0 && count < 2))
            width: parent.width
            y: grid.headY + 3

            onActiveFocusChanged: if (activeFocus)
                grid.showHead()
        }
    }
    TileGrid {
        id: grid

        objectName: "tiles"
        anchors.bottom: line.top
        anchors.bottomMargin: line.visible || footer.height > 0 ? 4 : 0
        anchors.left: filters.left
        anchors.leftMargin: -leftMargin
        anchors.right: filters.right
        anchors.rightMargin: -gap
        anchors.top: note.bottom
        anchors.topMargin: 4
        delegate: view.delegate
        headHeight: folders.visible ? folders.height + 2 : 0
        shelf: view.shelf

        onMenuRequested: (row, at) => view.openMenu(row, at)
        onRenameRequested: row => view.askForName(shelf.visible.urlAt(row), shelf.visible.nameAt(row))
    }
    Message {
        id: message

        readonly property bool recent: view.shelf.place === Shelf.Place.Recent

        anchors.bottom: grid.bottom
        anchors.left: grid.left
        anchors.right: grid.right
        anchors.top: grid.top
        anchors.topMargin: grid.headHeight
        hint: view.nothingSaved ? view.emptyHint : ""
        line: view.nothingSaved ? view.emptyLine : view.shelf.filtered ? "" : recent ? qsTr("Everything you drag out is kept here") : view.emptyPlaceLine
        symbol: view.nothingSaved ? view.emptySymbol : view.shelf.filtered ? "magnifyingglass" : recent ? "clock.arrow.circlepath" : "folder"
        title: view.nothingSaved ? view.emptyTitle : view.shelf.filtered ? qsTr("Nothing matches") : qsTr("Nothing here yet")
        visible: view.empty && !(folders.visible && view.shelf.search.trim().length > 0)
        widest: 290
    }
    Item {
        id: line

        anchors.bottom: footer.top
        anchors.left: filters.left
        anchors.right: filters.right
        height: visible ? hintText.implicitHeight + 10 : 0
        visible: view.hint.length > 0 && !selectionBar.visible

        Label {
            id: hintText

            secondary: true
            small: true
            text: view.hint
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
    Item {
        id: footer

        anchors.bottom: selectionBar.top
        anchors.left: filters.left
        anchors.right: filters.right
        height: childrenRect.height
    }
    SelectionBar {
        id: selectionBar

        anchors.bottom: parent.bottom
        anchors.left: filters.left
        anchors.right: filters.right
        removeLabel: view.removeLabel
        shelf: view.shelf
    }

    Shortcut {
        enabled: view.visible
        sequence: "Ctrl+Z"

        onActivated: view.shelf.undo()
    }
    Shortcut {
        enabled: view.visible
        sequence: "Ctrl+Shift+Z"

        onActivated: view.shelf.redo()
    }
    Shortcut {
        enabled: view.visible && view.shelf.selection.count > 0
        sequence: "Ctrl+C"

        onActivated: view.menu.actions.copy(view.shelf.selection.urls())
    }

    function openMenu(row: int, at: point) {
        menu.url = shelf.visible.urlAt(row);
        menu.name = shelf.visible.nameAt(row);
        menu.star = shelf.visible.starAt(row);
        menu.isBuiltIn = shelf.visible.builtInAt(row);
        menu.urls = shelf.selection.holds(row) ? shelf.selection.urls() : [menu.url];
        menu.openAt(grid, at.x, at.y);
    }
    function askForName(url: string, name: string) {
        renaming.url = url;
        renaming.ask(name);
    }
    Connections {
        function onRenameRequested() {
            view.askForName(view.menu.url, view.menu.name);
        }
        function onMoveRequested(entry: Item) {
            const line = entry.mapToItem(view.menu.contentItem, 0, 0).y + view.menu.topPadding;
            targets.urls = view.menu.urls;
            targets.parent = view.menu.parent;
            targets.area = Qt.rect(view.menu.x, view.menu.y + line, view.menu.width, entry.height);
            targets.open();
        }

        target: view.menu
    }
    CollectionMoveMenu {
        id: targets

        property list<string> urls: []

        shelf: view.shelf

        onTargetPicked: path => view.shelf.move(urls, path)
    }
    Loader {
        id: removal

        Connections {
            function onRemovalAsked(urls: list<string>, named: string) {
                removal.setSource("qrc:/qt/qml/Quillary/Library/RemovalAlert.qml", {
                    "named": named,
                    "parent": view,
                    "shelf": view.shelf,
                    "urls": urls
                });
            }

            target: view.shelf
        }
        Connections {
            function onClosed() {
                removal.source = "";
            }

            target: removal.item
        }
    }
    NameSheet {
        id: newCollection

        objectName: "newCollection"
        action: qsTr("Create")
        footnote: view.newCollectionFootnote
        title: view.newCollectionTitle

        onNamed: name => view.shelf.createCollection(name)
    }
    NameSheet {
        id: renaming

        property string url: ""

        objectName: "renaming"
        action: qsTr("Rename")
        title: view.renameTitle

        onNamed: name => view.shelf.rename(url, name)
    }
}
