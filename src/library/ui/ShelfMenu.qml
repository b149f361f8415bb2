import QtQuick
import Quillary.Controls
import Quillary.Model

/// The menu of a shelf's file: the shelf's own entries, the ways to be rid of the file, the one that can be taken back
/// anywhere first, and behind a separator `extras` and what every shelf offers. All act on `urls`: the file, or the whole
/// selection when it is part of it.
Menu {
    id: menu

    required property Shelf shelf
    required property FileActions actions
    property string url: ""
    property string name: ""
    property bool star: false
    property bool isBuiltIn: false
    readonly property bool several: urls.length > 1
    property list<string> urls: []
    property string removeLabel: qsTr("Delete")
    property list<Item> extras
    readonly property list<Item> removals: [
        MenuItem {
            symbol: "arrow.up.bin"
            text: qsTr("Move to Trash")
            visible: !menu.isBuiltIn

            onTriggered: menu.shelf.trash(menu.urls)
        },
        MenuItem {
            dangerous: true
            symbol: "trash"
            text: menu.removeLabel
            visible: !menu.isBuiltIn

            onTriggered: menu.shelf.remove(menu.urls)
        }
    ]
    readonly property list<Item> shared: [
        MenuItem {
            symbol: "doc.on.doc"
            text: qsTr("Copy")

            onTriggered: menu.actions.copy(menu.urls)
        },
        MenuItem {
            symbol: "link"
            text: qsTr("Copy Path")

            onTriggered: menu.actions.copyPath(menu.urls)
        },
        MenuItem {
            symbol: "quote.bubble"
            text: qsTr("Copy Credits")

            onTriggered: menu.actions.copyCredits(menu.urls)
        },
        MenuItem {
            symbol: "arrow.up.forward.app"
            text: qsTr("Show in Files")

            onTriggered: menu.actions.showInFiles(menu.urls)
        }
    ]
    readonly property MenuSeparator separator: MenuSeparator {}

    signal renameRequested
    /// A menu of collections is wanted beside this entry.
    signal moveRequested(Item entry)

    Component.onCompleted: {
        for (let row = 0; row < removals.length; ++row)
            addItem(removals[row]);
        addItem(separator);
        for (let row = 0; row < extras.length; ++row)
            addItem(extras[row]);
        for (let row = 0; row < shared.length; ++row)
            addItem(shared[row]);
    }
}
