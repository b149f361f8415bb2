import QtQuick
import Quillary.Controls
import Quillary.Library

/// One file in a list: a symbol, its name, its star.
ShelfItem {
    id: row

    required property string symbol

    Rectangle {
        anchors.fill: parent
        border.color: Theme.accent
        border.width: row.focusShown ? 1 : 0
        color: row.chosen ? Theme.accentGround : row.hovered ? Theme.raised : "transparent"
        radius: Theme.controlRadius
    }
    Symbol {
        color: row.chosen ? Theme.accentText : Theme.secondary
        height: parent.height
        name: row.symbol
        size: 16
        width: 16
        x: 8
    }
    Label {
        Accessible.ignored: true
        anchors.left: parent.left
        anchors.leftMargin: 32
        anchors.right: star.left
        anchors.rightMargin: Theme.gap
        color: row.chosen ? Theme.accentText : Theme.text
        elide: Text.ElideMiddle
        height: parent.height
        text: row.name
    }
    IconButton {
        id: star

        activeFocusOnTab: false
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        focusPolicy: Qt.NoFocus
        help: row.star ? qsTr("Remove from Favorites") : qsTr("Add to Favorites")
        ink: row.star ? Theme.favorite : Theme.secondary
        opacity: row.star || row.hovered ? 1 : 0
        symbol: row.star ? "star.fill" : "star"

        onClicked: row.grid.shelf.toggleFavorite(row.url)
    }
}
