import QtQuick
import Quillary.Controls
import Quillary.Model

/// The menu of a shelf's file, without its entries. They act on `urls`: the file, or the whole selection when it is part
/// of it.
Menu {
    id: menu

    required property Shelf shelf
    property string url: ""
    property string name: ""
    property bool star: false
    property bool isBuiltIn: false
    readonly property bool several: urls.length > 1
    property list<string> urls: []

    signal renameRequested
    /// A menu of collections is wanted where this one stood.
    signal moveRequested
}
