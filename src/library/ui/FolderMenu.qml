import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// A menu of the shelf's places, however many there are; the last entry can make a new collection.
T.Popup {
    id: menu

    required property Shelf shelf
    required property int content
    property bool offersNew: false
    property string spokenName: qsTr("Collections")
    /// Whose folders are the targets.
    property string parentPath: ""

    /// Stands over its parent rather than under it.
    property alias above: place.above
    /// What it stands beside, in its parent's coordinates; all of the parent while this is empty.
    property alias area: place.area

    signal picked(int place, string path)
    signal newRequested
    /// A target with folders of its own was entered, at this height.
    signal entered(string path, real at)

    focus: true
    height: Math.min(implicitHeight, place.tallest)
    implicitHeight: contentHeight + topPadding + bottomPadding
    margins: 6
    modal: false
    padding: 4
    width: 220

    background: Rectangle {
        border.color: Theme.outline
        color: Theme.sheet
        radius: 8
    }
    contentItem: FolderMenuList {
        focus: true
        content: menu.content
        filled: menu.visible
        shelf: menu.shelf
        offersNew: menu.offersNew
        parentPath: menu.parentPath
        spokenName: menu.spokenName

        onNewRequested: {
            menu.close();
            menu.newRequested();
        }
        onEntered: (path, at) => menu.entered(path, at)
        onWentBack: if (menu.parentPath.length > 0)
            menu.close()
        onPicked: (place, path) => {
            menu.close();
            menu.picked(place, path);
        }
    }
    readonly property PopupPlace place: PopupPlace {
        id: place

        popup: menu
    }
    enter: Transition {
        NumberAnimation {
            duration: Theme.quick
            from: 0
            property: "opacity"
            to: 1
        }
    }
}
