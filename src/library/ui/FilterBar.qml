pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// What narrows the Images shelf: collection, search, favorites, source format.
Item {
    id: bar

    required property PanelModel model
    required property bool showsRecent

    signal picked(int kind, string path)
    signal newCollectionRequested

    readonly property string place: {
        if (showsRecent)
            return qsTr("Recent");
        switch (model.filterKind) {
        case "unfiled":
            return qsTr("Unfiled");
        case "named":
            return model.filterName.split(" / ").pop();
        case "builtIn":
            return model.filterName;
        }
        return qsTr("All");
    }

    implicitHeight: Theme.controlHeight

    Button {
        id: collection

        chevron: "chevron.down"
        help: qsTr("Choose a collection")
        spokenName: qsTr("Collection: %1").arg(bar.place)
        symbol: "folder"
        text: bar.place
        width: Math.min(implicitWidth, bar.width * 0.38)

        onClicked: menu.open()

        FolderMenu {
            id: menu

            objectName: "collectionMenu"
            content: FolderListModel.Filters
            model: bar.model
            offersNew: true
            y: collection.height + 4

            onNewRequested: bar.newCollectionRequested()
            onPicked: (kind, path) => bar.picked(kind, path)
        }
    }
    SearchField {
        anchors.left: collection.right
        anchors.leftMargin: Theme.smallGap
        anchors.right: favorites.left
        anchors.rightMargin: Theme.smallGap
        enabled: !bar.showsRecent
        text: bar.model.searchText

        onTextEdited: bar.model.searchText = text
        onTextChanged: if (text.length === 0 && bar.model.searchText.length > 0)
            bar.model.searchText = ""
    }
    IconButton {
        id: favorites

        anchors.right: chips.left
        anchors.rightMargin: chips.width > 0 ? Theme.smallGap : 0
        checkable: false
        help: bar.model.favoritesOnly ? qsTr("Showing favorites only") : qsTr("Show favorites only")
        ink: bar.model.favoritesOnly ? Theme.favorite : Theme.secondary
        symbol: bar.model.favoritesOnly ? "star.fill" : "star"

        onClicked: bar.model.favoritesOnly = !bar.model.favoritesOnly
    }
    ListView {
        id: chips

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        boundsBehavior: Flickable.StopAtBounds
        clip: contentWidth > width
        height: 22
        interactive: contentWidth > width
        model: bar.model.availableFormats
        orientation: ListView.Horizontal
        spacing: 5
        width: Math.min(contentWidth, bar.width * 0.3)

        delegate: FormatChip {
            required property string modelData

            format: modelData
            on: bar.model.formatFilter === modelData
            y: 2

            onClicked: bar.model.formatFilter = on ? "" : modelData
        }
    }
}
