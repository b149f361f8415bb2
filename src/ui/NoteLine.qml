import QtQuick
import Quillary.Controls

/// A symbol and one line of text, such as the result of a save. Without a text it is invisible.
Item {
    id: note

    required property string symbol
    required property string text
    property color ink: Theme.good

    Accessible.name: text
    Accessible.role: Accessible.StaticText
    implicitHeight: 18
    visible: text.length > 0

    Symbol {
        id: sign

        color: note.ink
        height: parent.height
        name: note.symbol
        size: 14
        width: 14
    }
    Label {
        Accessible.ignored: true
        anchors.left: sign.right
        anchors.leftMargin: 7
        anchors.right: parent.right
        color: note.ink
        height: parent.height
        small: true
        text: note.text
    }
}
