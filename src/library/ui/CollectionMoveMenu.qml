import QtQuick
import Quillary.Controls
import Quillary.Library

/// Offers the places on a shelf that files can move to: a collection with folders of its own leads to a further menu,
/// whose first entry is the collection itself. Each level is made when it is opened.
FolderMenu {
    id: menu

    property string title: qsTr("Move to")

    /// The collection's path, empty for the shelf itself.
    signal targetPicked(string path)

    spokenName: title
    content: FolderListModel.Targets

    onClosed: further.source = ""
    onEntered: (path, at) => {
        further.setSource(Qt.resolvedUrl("CollectionMoveMenu.qml"), {
            "area": Qt.rect(menu.x + 24, menu.y + menu.topPadding + at, menu.width - 24, Theme.controlHeight),
            "parent": menu.parent,
            "parentPath": path,
            "shelf": menu.shelf
        });
        (further.item as FolderMenu)?.open();
    }
    onPicked: (place, path) => menu.targetPicked(path)

    Loader {
        id: further

        objectName: "further"
    }
    Connections {
        function onTargetPicked(path: string) {
            menu.close();
            menu.targetPicked(path);
        }

        ignoreUnknownSignals: true
        target: further.item
    }
}
