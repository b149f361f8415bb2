import QtQuick
import Quillary.Library

/// Offers the places on a shelf that files can move to.
FolderMenu {
    id: menu

    /// The collection's path, empty for the shelf itself.
    signal targetPicked(string path)

    content: FolderListModel.Targets

    onPicked: (place, path) => menu.targetPicked(path)
}
