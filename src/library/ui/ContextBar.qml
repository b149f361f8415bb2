import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// One line that tells what is shown: the number of matches while something is filtered, else the way to the selected
/// collection. No height where there is nothing to tell.
Item {
    id: bar

    required property Shelf shelf
    /// What the matches are searched in when everything is shown, such as "Images".
    property string everything: shelf.title
    readonly property int matches: shelf.visible.count
    readonly property bool nested: !shelf.filtered && shelf.place === Shelf.Place.Collection
    readonly property string where: {
        switch (shelf.place) {
        case Shelf.Place.Collection:
            return qsTr(" in %1").arg(shelf.placePath.split(" / ").pop());
        case Shelf.Place.BuiltIn:
            return qsTr(" in %1").arg(shelf.placePath);
        case Shelf.Place.Unfiled:
            return qsTr(" in Unfiled");
        case Shelf.Place.Recent:
            return qsTr(" in Recent");
        }
        return qsTr(" in all %1").arg(everything);
    }

    height: visible ? 20 : 0
    visible: shelf.filtered || nested

    Label {
        anchors.left: parent.left
        anchors.right: clear.left
        anchors.rightMargin: Theme.gap
        elide: Text.ElideMiddle
        height: parent.height
        secondary: true
        small: true
        text: qsTr("%n match(es)", "", bar.matches) + bar.where
        visible: bar.shelf.filtered
    }
    TextButton {
        id: clear

        anchors.right: parent.right
        height: parent.height
        text: qsTr("Clear")
        visible: bar.shelf.filtered

        onClicked: bar.shelf.clearFilters()
    }
    PathBar {
        anchors.fill: parent
        path: bar.nested ? bar.shelf.placePath : ""
        rootLabel: bar.shelf.title
        visible: bar.nested

        onPicked: path => bar.shelf.pick(path.length > 0 ? Shelf.Place.Collection : Shelf.Place.All, path)
    }
}
