import QtQuick
import Quillary.Controls

/// A symbol, a title and up to two lines in the middle of an empty area.
Item {
    id: message

    required property string symbol
    required property string title
    required property string line
    required property string hint
    property color symbolInk: Theme.secondary
    property int widest: 250
    /// What can be done about it, below the texts.
    default property alias actions: column.data

    Accessible.name: `${title}. ${line} ${hint}`
    Accessible.role: Accessible.StaticText

    Column {
        id: column

        anchors.centerIn: parent
        spacing: 7
        width: Math.min(parent.width - 40, message.widest)

        Symbol {
            color: message.symbolInk
            height: 44
            name: message.symbol
            size: 40
            width: parent.width
        }
        Label {
            Accessible.ignored: true
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            text: message.title
            width: parent.width
            wrapMode: Text.Wrap
        }
        Label {
            Accessible.ignored: true
            color: Theme.softText
            horizontalAlignment: Text.AlignHCenter
            text: message.line
            visible: text.length > 0
            width: parent.width
            wrapMode: Text.Wrap
        }
        Label {
            Accessible.ignored: true
            horizontalAlignment: Text.AlignHCenter
            lineHeight: 1.15
            secondary: true
            small: true
            text: message.hint
            visible: text.length > 0
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
}
