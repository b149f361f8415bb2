import QtQuick
import Quillary.Controls

/// What lies over a tile's picture: the ring of a selected or focused tile, its mark, its star.
Item {
    id: frame

    required property bool selected
    required property bool focused
    required property bool starred

    Rectangle {
        anchors.fill: parent
        anchors.margins: -2
        border.color: frame.selected ? Theme.accent : Theme.accentText
        border.width: frame.selected ? 2 : 1
        color: "transparent"
        radius: Theme.tileRadius + 2
        visible: frame.selected || frame.focused
    }
    Symbol {
        color: Theme.favorite
        name: "star.fill"
        size: 14
        style: Text.Outline
        styleColor: Theme.pictureShade
        visible: frame.starred
        x: 4
        y: 3
    }
    Rectangle {
        anchors.right: parent.right
        anchors.rightMargin: 4
        color: Theme.accentInk
        height: 12
        radius: 6
        visible: frame.selected
        width: 12
        y: 4

        Symbol {
            anchors.centerIn: parent
            color: Theme.accent
            name: "checkmark.circle.fill"
            size: 16
        }
    }
}
