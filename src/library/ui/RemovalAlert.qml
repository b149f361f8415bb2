import QtQuick
import Quillary.Controls
import Quillary.Model

/// Asks before files are removed that are too large or too many to be brought back. It opens when it is made.
Sheet {
    id: alert

    required property Shelf shelf
    required property list<string> urls
    /// The files, as "“Logo”" or "3 files".
    required property string named

    objectName: "removalAlert"
    title: qsTr("Remove %1 for good?").arg(named)
    widest: 320

    Component.onCompleted: open()
    onOpened: keep.forceActiveFocus(Qt.PopupFocusReason)

    Label {
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        color: Theme.softText
        lineHeight: 1.1
        small: true
        text: qsTr("That is too much to be brought back afterwards. The trash keeps it until you empty it.")
        width: parent.width
        wrapMode: Text.Wrap
    }
    Row {
        anchors.right: parent.right
        spacing: Theme.smallGap

        Button {
            dangerous: true
            objectName: "removeForGood"
            text: qsTr("Remove")

            onClicked: {
                alert.close();
                alert.shelf.removeForGood(alert.urls);
            }
        }
        Button {
            objectName: "trashInstead"
            text: qsTr("Move to Trash")

            onClicked: {
                alert.close();
                alert.shelf.trash(alert.urls);
            }
        }
        Button {
            id: keep

            prominent: true
            text: qsTr("Cancel")

            onClicked: alert.close()
        }
    }
}
