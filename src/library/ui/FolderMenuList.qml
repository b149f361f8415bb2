pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// The places of a folder menu, read only while it is open.
ListView {
    id: list

    required property PanelModel panel
    required property int content
    required property bool filled
    required property bool offersNew

    signal picked(int kind, string path)
    signal newRequested

    function chooseCurrent() {
        const entry = currentItem as FolderMenuEntry;
        if (entry)
            picked(entry.kind, entry.path);
    }

    Accessible.name: qsTr("Collections")
    Accessible.role: Accessible.PopupMenu
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    focus: true
    footer: offersNew ? newEntry : null
    implicitHeight: contentHeight
    interactive: contentHeight > height
    keyNavigationWraps: true
    model: FolderListModel {
        active: list.filled
        content: list.content
        model: list.panel
    }

    Keys.onReturnPressed: chooseCurrent()
    Keys.onSpacePressed: chooseCurrent()

    delegate: FolderMenuEntry {
        width: list.width

        onClicked: list.picked(kind, path)
        onPointed: list.currentIndex = index
    }

    T.ScrollBar.vertical: ScrollBar {}

    Component {
        id: newEntry

        Item {
            height: 9 + Theme.controlHeight
            width: list.width

            Divider {
                color: Theme.outline
                width: parent.width
                y: 4
            }
            MenuItem {
                text: qsTr("New Collection…")
                symbol: "folder.badge.plus"
                width: parent.width
                y: 9

                onClicked: list.newRequested()
            }
        }
    }
}
