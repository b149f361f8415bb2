import QtQuick
import Quillary.Controls
import Quillary.Drag

/// One image of the browser: its thumbnail on a checkerboard, its name, its star. Drags out as a file.
Item {
    id: tile

    required property string url
    required property string name
    required property string stamp
    required property bool star
    required property bool isBuiltIn
    required property bool isSelected
    required property bool focusShown
    /// Of the picture; its height follows.
    required property real pictureWidth
    readonly property real pictureHeight: Math.round(pictureWidth * 0.9)

    signal tapped(int modifiers)
    signal menuRequested(point at)
    signal fileRequested(DragRequest request)

    Accessible.description: qsTr("Drag into Final Cut · click to select")
    Accessible.name: star ? qsTr("%1, favorite").arg(name) : name
    Accessible.role: Accessible.ListItem
    Accessible.selected: isSelected

    Checkerboard {
        height: tile.pictureHeight
        ink: Theme.ink
        opacity: 0.7
        radius: Theme.tileRadius
        square: 7
        width: tile.pictureWidth
    }
    Image {
        id: picture

        asynchronous: true
        fillMode: Image.PreserveAspectFit
        height: tile.pictureHeight
        opacity: status === Image.Ready ? 1 : 0
        smooth: true
        source: "image://thumbnail/" + tile.url + "?" + tile.stamp
        sourceSize.height: 198
        sourceSize.width: 220
        width: tile.pictureWidth

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
        visible: picture.status === Image.Error
        width: tile.pictureWidth
    }
    Rectangle {
        border.color: Theme.accent
        border.width: 2
        color: "transparent"
        height: tile.pictureHeight + 4
        radius: Theme.tileRadius + 2
        visible: tile.isSelected || tile.focusShown
        width: tile.pictureWidth + 4
        x: -2
        y: -2
    }
    Symbol {
        color: Theme.favorite
        name: "star.fill"
        size: 14
        style: Text.Outline
        styleColor: "#40000000"
        visible: tile.star
        x: 4
        y: 3
    }
    Label {
        Accessible.ignored: true
        color: Theme.softText
        elide: Text.ElideMiddle
        height: 16
        horizontalAlignment: Text.AlignHCenter
        small: true
        text: tile.name
        width: tile.pictureWidth
        y: tile.pictureHeight + 4
    }

    MouseArea {
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        height: tile.pictureHeight + 20
        width: tile.pictureWidth

        onClicked: mouse => tile.menuRequested(Qt.point(mouse.x, mouse.y))
    }
    FileDragSource {
        height: tile.pictureHeight + 20
        picture: picture
        title: tile.name
        width: tile.pictureWidth

        onTapped: modifiers => tile.tapped(modifiers)
        onUrlRequested: request => tile.fileRequested(request)
    }
    HoverHandler {
        id: hover
    }
    Loader {
        active: hover.hovered
        y: tile.pictureHeight + 14

        sourceComponent: ToolTip {
            shown: true
            text: qsTr("Drag into Final Cut · click to select")
        }
    }
}
