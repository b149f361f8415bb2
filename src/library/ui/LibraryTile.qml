import QtQuick
import Quillary.Controls
import Quillary.Library

/// One image of the browser: its thumbnail on a checkerboard, its name, its star and its mark.
ShelfItem {
    id: tile

    readonly property real pictureHeight: grid.pictureHeight

    help: Wording.forEditor(qsTr("Drag into Final Cut · click to select"))
    picture: thumbnail
    pictureSource: thumbnail.source

    Checkerboard {
        height: tile.pictureHeight
        ink: Theme.ink
        opacity: 0.7
        radius: Theme.tileRadius
        square: 7
        width: tile.width
    }
    Image {
        id: thumbnail

        asynchronous: true
        fillMode: Image.PreserveAspectFit
        height: tile.pictureHeight
        opacity: status === Image.Ready ? 1 : 0
        smooth: true
        source: "image://thumbnail/" + tile.url + "?" + tile.stamp
        sourceSize.height: 167
        sourceSize.width: 220
        width: tile.width

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.fade
            }
        }
    }
    Symbol {
        color: Theme.secondary
        height: tile.pictureHeight
        name: "questionmark.square.dashed"
        size: 26
        visible: thumbnail.status === Image.Error
        width: tile.width
    }
    TileFrame {
        focused: tile.focusShown
        height: tile.pictureHeight
        selected: tile.chosen
        starred: tile.star
        width: tile.width
    }
    Label {
        Accessible.ignored: true
        color: Theme.softText
        elide: Text.ElideMiddle
        height: 16
        horizontalAlignment: Text.AlignHCenter
        small: true
        text: tile.name
        width: tile.width
        y: tile.pictureHeight + 3
    }
}
