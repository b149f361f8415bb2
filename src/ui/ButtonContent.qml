import QtQuick
import Quillary.Controls

/// What stands on a button, in its middle: a symbol, a text that elides when it must, a chevron.
Item {
    id: content

    required property string text
    required property string symbol
    required property string chevron
    required property color ink

    implicitHeight: Theme.controlHeight
    implicitWidth: caption.implicitWidth + row.rest

    Row {
        id: row

        readonly property int signs: (before.visible ? 1 : 0) + (after.visible ? 1 : 0)
        readonly property real rest: signs * Theme.symbolSize + (caption.visible ? signs : Math.max(0, signs - 1)) * spacing

        anchors.centerIn: parent
        height: parent.height
        spacing: 5

        Symbol {
            id: before

            color: content.ink
            height: parent.height
            name: content.symbol
            visible: name.length > 0
            width: Theme.symbolSize
        }
        Label {
            id: caption

            color: content.ink
            font.weight: Font.Medium
            height: parent.height
            text: content.text
            visible: text.length > 0
            width: Math.min(Math.ceil(implicitWidth), content.width - row.rest)
        }
        Symbol {
            id: after

            color: content.ink
            height: parent.height
            name: content.chevron
            visible: name.length > 0
            width: Theme.symbolSize
        }
    }
}
