import QtQuick
import Quillary.Controls
import Quillary.Drag
import Quillary.Library
import Quillary.Media
import Quillary.Model

/// One clip: a frame of it, other frames while the pointer moves across, its name and its length.
ShelfItem {
    id: tile

    required property VideoShelf videoShelf
    readonly property real pictureHeight: grid.pictureHeight
    property real scrubAt: -1

    Accessible.description: clip.durationLabel
    dragsAnywhere: false
    help: ""

    ClipScrub {
        id: clip

        shelf: tile.videoShelf
        stamp: tile.stamp
        url: tile.url
    }
    Item {
        id: frame

        clip: true
        height: tile.pictureHeight
        width: tile.width

        Rectangle {
            anchors.fill: parent
            color: Theme.row
            radius: Theme.tileRadius
        }
        Symbol {
            anchors.fill: parent
            color: Theme.secondary
            name: "film"
            size: 26
            visible: thumbnail.status !== Image.Ready
        }
        Image {
            id: thumbnail

            anchors.fill: parent
            asynchronous: true
            fillMode: Image.PreserveAspectFit
            opacity: status === Image.Ready ? 1 : 0
            source: "image://thumbnail/" + tile.url + "?" + tile.stamp
            sourceSize.height: 248
            sourceSize.width: 440
            visible: tile.scrubAt < 0 || !scrubbed.shown

            Behavior on opacity {
                NumberAnimation {
                    duration: Theme.fade
                }
            }
        }
        PictureView {
            id: scrubbed

            readonly property bool shown: pixelSize.width > 0

            anchors.fill: parent
            fadeDuration: 0
            picture: clip.scrubFrame
            visible: tile.scrubAt >= 0
        }
        Rectangle {
            color: Theme.accentInk
            height: parent.height
            visible: tile.scrubAt >= 0
            width: 2
            x: Math.max(0, tile.scrubAt) * (parent.width - width)
        }
        Rectangle {
            anchors.bottom: parent.bottom
            anchors.margins: 5
            anchors.right: parent.right
            color: Theme.caption
            height: 17
            radius: 4
            visible: length.text.length > 0
            width: length.implicitWidth + 10

            Label {
                id: length

                anchors.centerIn: parent
                color: Theme.accentInk
                small: true
                text: clip.durationLabel
            }
        }
    }
    FileDragSource {
        anchors.fill: parent
        picture: frame
        source: thumbnail.source
        title: tile.name

        onHoverEnded: {
            tile.scrubAt = -1;
            clip.rest();
        }
        onHovered: fraction => {
            tile.scrubAt = fraction;
            clip.scrub(fraction);
        }
        onTapped: modifiers => tile.grid.click(tile.index, modifiers)
        onUrlRequested: request => request.url = tile.videoShelf.dragFileUrl(tile.url)
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
        small: true
        text: tile.name
        width: tile.width
        y: tile.pictureHeight + 3
    }
}
