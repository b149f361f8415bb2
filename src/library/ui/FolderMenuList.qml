pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// What stands in a folder menu: the places, read only while it is open, and the way to a new one.
FocusScope {
    id: menu

    required property Shelf shelf
    required property int content
    required property bool filled
    property string spokenName: qsTr("Collections")
    required property bool offersNew
    property string parentPath: ""
    readonly property int footerHeight: offersNew ? 9 + Theme.controlHeight : 0

    signal picked(int place, string path)
    signal newRequested
    signal entered(string path, real at)
    signal wentBack

    Accessible.name: menu.spokenName
    Accessible.role: Accessible.PopupMenu
    implicitHeight: list.contentHeight + footerHeight

    ListView {
        id: list

        function chooseCurrent() {
            const entry = currentItem as FolderMenuEntry;
            if (entry)
                choose(entry);
        }
        function choose(entry: FolderMenuEntry) {
            if (entry.nested)
                menu.entered(entry.path, entry.y - contentY);
            else
                menu.picked(entry.place, entry.path);
        }

        Accessible.name: menu.spokenName
        Accessible.role: Accessible.List
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        focus: true
        height: menu.height - menu.footerHeight
        interactive: contentHeight > height
        width: menu.width

        model: FolderListModel {
            active: menu.filled
            content: menu.content
            parentPath: menu.parentPath
            shelf: menu.shelf
        }

        Keys.onDownPressed: event => {
            if (currentIndex < count - 1)
                incrementCurrentIndex();
            else if (menu.offersNew)
                makeNew.forceActiveFocus(Qt.TabFocusReason);
        }
        Keys.onLeftPressed: menu.wentBack()
        Keys.onReturnPressed: chooseCurrent()
        Keys.onRightPressed: {
            const entry = currentItem as FolderMenuEntry;
            if (entry?.nested)
                choose(entry);
        }
        Keys.onSpacePressed: chooseCurrent()

        delegate: FolderMenuEntry {
            width: list.width

            onClicked: list.choose(this)
            onPointed: list.currentIndex = index
        }

        T.ScrollBar.vertical: ScrollBar {}
    }
    Divider {
        color: Theme.outline
        visible: menu.offersNew
        width: menu.width
        y: list.height + 4
    }
    MenuItem {
        id: makeNew

        highlighted: activeFocus || hovered
        symbol: "folder.badge.plus"
        text: qsTr("New Collection…")
        visible: menu.offersNew
        width: menu.width
        y: list.height + 9

        Keys.onReturnPressed: menu.newRequested()
        Keys.onUpPressed: list.forceActiveFocus(Qt.BacktabFocusReason)
        onClicked: menu.newRequested()
    }
}
