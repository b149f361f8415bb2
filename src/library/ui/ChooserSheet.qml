pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Model

/// The panel's own chooser of folders and files.
Sheet {
    id: sheet

    required property FolderChooser chooser

    function holds(rows: list<int>, row: int): bool {
        for (let at = 0; at < rows.length; ++at)
            if (rows[at] === row)
                return true;
        return false;
    }

    objectName: "chooserSheet"
    title: chooser.accept
    visible: chooser.active
    widest: 340

    onAboutToHide: chooser.cancel()
    onOpened: list.forceActiveFocus(Qt.PopupFocusReason)

    Label {
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        color: Theme.softText
        small: true
        text: sheet.chooser.message
        width: parent.width
        wrapMode: Text.Wrap
    }
    TextField {
        id: place

        objectName: "chooserFolder"
        placeholderText: qsTr("Folder")
        spokenName: qsTr("Folder")
        symbol: "folder"
        text: sheet.chooser.folder
        width: parent.width

        onAccepted: if (!sheet.chooser.go(text))
            text = sheet.chooser.folder
    }
    ListView {
        id: list

        Accessible.name: qsTr("In this folder")
        Accessible.role: Accessible.List
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        height: 180
        keyNavigationEnabled: true
        model: sheet.chooser.entries
        objectName: "chooserEntries"
        width: parent.width

        T.ScrollBar.vertical: ScrollBar {}
        delegate: T.AbstractButton {
            id: entry

            required property int index
            required property string modelData
            readonly property bool isFolder: modelData.endsWith("/")
            readonly property bool picked: sheet.holds(sheet.chooser.pickedRows, index)

            Accessible.name: modelData
            Accessible.role: Accessible.ListItem
            Accessible.selectable: true
            Accessible.selected: picked
            Accessible.onPressAction: clicked()
            implicitHeight: Theme.controlHeight
            width: ListView.view.width

            onClicked: {
                ListView.view.currentIndex = index;
                sheet.chooser.open(index);
            }
            onDoubleClicked: sheet.chooser.finishWith(index)

            background: Rectangle {
                color: entry.ListView.isCurrentItem && list.activeFocus ? Theme.accentGround
                     : entry.hovered ? Theme.raised : "transparent"
                radius: Theme.controlRadius
            }
            contentItem: Item {
                Symbol {
                    height: parent.height
                    color: entry.picked ? Theme.accentText : Theme.secondary
                    name: entry.isFolder ? "folder" : entry.picked ? "checkmark.circle.fill" : "doc"
                    size: 15
                    width: 15
                    x: 6
                }
                Label {
                    anchors.left: parent.left
                    anchors.leftMargin: 28
                    anchors.right: parent.right
                    elide: Text.ElideMiddle
                    height: parent.height
                    text: entry.isFolder ? entry.modelData.slice(0, -1) : entry.modelData
                }
            }
        }

        Keys.onEnterPressed: sheet.chooser.finishWith(currentIndex)
        Keys.onReturnPressed: sheet.chooser.finishWith(currentIndex)
        Keys.onSpacePressed: sheet.chooser.open(currentIndex)
        Keys.onPressed: event => {
            if (event.key !== Qt.Key_Backspace)
                return;
            sheet.chooser.up();
            event.accepted = true;
        }
    }
    Row {
        anchors.right: parent.right
        spacing: Theme.smallGap

        Button {
            objectName: "chooserUp"
            text: qsTr("Up")

            onClicked: sheet.chooser.up()
        }
        Button {
            text: qsTr("Cancel")

            onClicked: sheet.chooser.cancel()
        }
        Button {
            objectName: "chooserAccept"
            enabled: !sheet.chooser.picksFiles || sheet.chooser.pickedRows.length > 0
            prominent: true
            text: sheet.chooser.pickedRows.length > 1 ? qsTr("%1 · %n file(s)", "", sheet.chooser.pickedRows.length).arg(sheet.chooser.accept) : sheet.chooser.accept

            onClicked: sheet.chooser.pick()
        }
    }
}
