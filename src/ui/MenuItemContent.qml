import QtQuick
import Quillary.Controls

/// What stands on a line of a menu: a symbol in a column of its own, the text, a quieter text at the end.
Item {
    id: content

    required property string text
    required property string symbol
    required property string detail
    required property color ink
    required property color detailInk

    implicitHeight: Theme.controlHeight
    implicitWidth: caption.x + Math.ceil(caption.implicitWidth) + end.width + (detail.length > 0 ? 26 : 12)

    Symbol {
        color: content.ink
        height: parent.height
        name: content.symbol
        size: 15
        width: 15
        x: 8
    }
    Label {
        id: caption

        color: content.ink
        elide: Text.ElideMiddle
        height: parent.height
        text: content.text
        width: end.x - x - (content.detail.length > 0 ? 8 : 0)
        x: 30
    }
    Label {
        id: end

        anchors.right: parent.right
        anchors.rightMargin: 10
        color: content.detailInk
        height: parent.height
        text: content.detail
    }
}
