import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// A folder of the browser: symbol, name, count.
T.AbstractButton {
    id: row

    required property string symbol
    required property string label
    /// Below zero it is not shown.
    required property int count
    required property bool accented
    readonly property color ink: accented ? Theme.accentText : Theme.text

    implicitHeight: Theme.controlHeight

    background: Rectangle {
        color: row.accented ? Theme.accentGround : row.down ? Theme.controlPressed : row.hovered ? Theme.raised : Theme.row
        radius: Theme.controlRadius
    }
    contentItem: Item {
        Symbol {
            color: row.ink
            height: parent.height
            name: row.symbol
            size: 15
            width: 15
            x: 9
        }
        Label {
            anchors.left: parent.left
            anchors.leftMargin: 31
            anchors.right: parent.right
            anchors.rightMargin: row.count < 0 ? 9 : 14 + 8 * row.count.toString().length
            color: row.ink
            elide: Text.ElideMiddle
            height: parent.height
            text: row.label
        }
        Label {
            anchors.right: parent.right
            anchors.rightMargin: 9
            color: row.accented ? Theme.accentText : row.hovered ? Theme.softText : Theme.secondary
            height: parent.height
            small: true
            text: row.count
            visible: row.count >= 0
        }
    }
}
