pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// What narrows a shelf: collection, search, favorites, and what the shelf adds before and after the star.
Item {
    id: bar

    required property Shelf shelf
    /// Whether a menu offers the places; without it the folder section has to do.
    property bool offersPlaces: true
    property alias beforeStar: before.data
    property alias afterStar: after.data

    signal newCollectionRequested

    readonly property string where: {
        switch (shelf.place) {
        case Shelf.Place.Recent:
            return qsTr("Recent");
        case Shelf.Place.Unfiled:
            return qsTr("Unfiled");
        case Shelf.Place.Collection:
            return shelf.placePath.split(" / ").pop();
        case Shelf.Place.BuiltIn:
            return shelf.placePath;
        }
        return qsTr("All");
    }

    implicitHeight: Theme.controlHeight

    Button {
        id: collection

        chevron: "chevron.down"
        help: qsTr("Choose a collection")
        spokenName: qsTr("Collection: %1").arg(bar.where)
        symbol: "folder"
        text: bar.where
        visible: bar.offersPlaces
        width: visible ? Math.min(implicitWidth, bar.width * 0.38) : 0

        onClicked: menu.open()

        FolderMenu {
            id: menu

            objectName: "collectionMenu"
            content: FolderListModel.Filters
            offersNew: true
            shelf: bar.shelf

            onNewRequested: bar.newCollectionRequested()
            onPicked: (place, path) => bar.shelf.pick(place, path)
        }
    }
    SearchField {
        anchors.left: collection.right
        anchors.leftMargin: collection.visible ? Theme.smallGap : 0
        anchors.right: controls.left
        anchors.rightMargin: Theme.smallGap
        text: bar.shelf.search

        onTextEdited: bar.shelf.search = text
        onTextChanged: if (text.length === 0 && bar.shelf.search.length > 0)
            bar.shelf.search = ""
    }
    Row {
        id: controls

        anchors.right: parent.right
        height: parent.height
        spacing: 2

        Row {
            id: before

            height: parent.height
            spacing: Theme.smallGap
            visible: width > 0
        }
        IconButton {
            help: bar.shelf.favorites.only ? qsTr("Showing favorites only") : qsTr("Show favorites only")
            ink: bar.shelf.favorites.only ? Theme.favorite : Theme.secondary
            symbol: bar.shelf.favorites.only ? "star.fill" : "star"

            onClicked: bar.shelf.favorites.only = !bar.shelf.favorites.only
        }
        Row {
            id: after

            height: parent.height
            spacing: Theme.smallGap
            visible: width > 0
        }
    }
}
