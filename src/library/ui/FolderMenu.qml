pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// A menu of the shelf's places, however many there are; the last entry can make a new collection.
T.Popup {
    id: menu

    required property PanelModel model
    required property int content
    property bool offersNew: false

    signal picked(int kind, string path)
    signal newRequested

    function choose(index: int) {
        const entry = list.itemAtIndex(index) as Entry;
        if (!entry)
            return;
        close();
        picked(entry.kind, entry.path);
    }

    focus: true
    height: Math.min(implicitHeight, (T.Overlay.overlay?.height ?? 300) - 24)
    implicitHeight: list.contentHeight + topPadding + bottomPadding
    margins: 6
    modal: false
    padding: 4
    width: 220

    onAboutToShow: list.currentIndex = 0

    background: Rectangle {
        border.color: Theme.outline
        color: Theme.sheet
        radius: 8
    }
    contentItem: List {
        id: list
    }
    enter: Transition {
        NumberAnimation {
            duration: Theme.quick
            from: 0
            property: "opacity"
            to: 1
        }
    }

    component Entry: T.ItemDelegate {
        id: entry

        required property int index
        required property int kind
        required property string path
        required property string label
        required property int depth
        required property int total
        required property string symbol
        readonly property color ink: highlighted ? Theme.onAccent : Theme.text

        Accessible.name: label
        Accessible.role: Accessible.MenuItem
        height: Theme.controlHeight
        highlighted: ListView.isCurrentItem
        leftPadding: 10 * depth
        width: ListView.view.width

        onClicked: menu.choose(index)
        onHoveredChanged: if (hovered)
            ListView.view.currentIndex = index

        background: Rectangle {
            color: entry.highlighted ? Theme.accent : "transparent"
            radius: 5
        }
        contentItem: MenuItemContent {
            detail: entry.total
            detailInk: entry.highlighted ? Theme.onAccent : Theme.secondary
            ink: entry.ink
            symbol: entry.symbol
            text: entry.label
        }
    }
    component List: ListView {
        id: view

        Accessible.name: qsTr("Collections")
        Accessible.role: Accessible.PopupMenu
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        focus: true
        implicitHeight: contentHeight
        interactive: contentHeight > height
        keyNavigationWraps: true
        model: menu.visible ? places : null

        Keys.onReturnPressed: menu.choose(currentIndex)
        Keys.onSpacePressed: menu.choose(currentIndex)

        readonly property FolderListModel places: FolderListModel {
            content: menu.content
            model: menu.model
        }

        delegate: Entry {}
        footer: menu.offersNew ? newEntry : null

        T.ScrollBar.vertical: ScrollBar {}

        Component {
            id: newEntry

            Item {
                height: 9 + Theme.controlHeight
                width: view.width

                Divider {
                    color: Theme.outline
                    width: parent.width
                    y: 4
                }
                MenuItem {
                    symbol: "folder.badge.plus"
                    text: qsTr("New Collection…")
                    width: parent.width
                    y: 9

                    onClicked: {
                        menu.close();
                        menu.newRequested();
                    }
                }
            }
        }
    }
}
