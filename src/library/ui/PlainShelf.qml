import QtQuick
import Quillary.Controls

/// A shelf that tells how much lies on it and where, or how to fill it.
Item {
    id: shelf

    required property int count
    required property string folder
    required property string symbol
    required property string title
    required property string hint
    required property string note

    Message {
        anchors.bottom: line.visible ? line.top : parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        hint: shelf.count > 0 ? qsTr("They lie in %1 of your library, ready to be dragged from a file manager.").arg(shelf.folder) : shelf.hint
        line: ""
        symbol: shelf.symbol
        title: shelf.count === 0 ? shelf.title : shelf.count === 1 ? qsTr("1 file") : qsTr("%1 files").arg(shelf.count)
        widest: 290
    }
    NoteLine {
        id: line

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.margins: Theme.margin
        anchors.right: parent.right
        symbol: "checkmark.circle.fill"
        text: shelf.note
    }
}
