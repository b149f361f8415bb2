pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Model

/// The panel's own chooser of folders and files.
Sheet {
    id: sheet

    required property FolderChooser chooser

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

            Accessible.name: modelData
            Accessible.role: Accessible.ListItem
            implicitHeight: Theme.controlHeight
            width: ListView.view.width

            onClicked: sheet.chooser.open(index)

            background: Rectangle {
                color: entry.ListView.isCurrentItem && list.activeFocus ? Theme.accentGround
                     : entry.hovered ? Theme.raised : "transparent"
                radius: Theme.controlRadius
            }
            contentItem: Item {
                Symbol {
                    height: parent.height
                    name: entry.isFolder ? "folder" : "photo.on.rectangle.angled"
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

        Keys.onEnterPressed: sheet.chooser.open(currentIndex)
        Keys.onReturnPressed: sheet.chooser.open(currentIndex)
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
            prominent: true
            text: sheet.chooser.accept
            visible: !sheet.chooser.picksFiles

            onClicked: sheet.chooser.pickFolder()
        }
    }
}
