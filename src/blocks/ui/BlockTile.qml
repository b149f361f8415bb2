import QtQuick
import Quillary.Blocks
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// One block: its poster or a drawing of its layers, its name, what it holds. Drags out as a compound clip.
ShelfItem {
    id: tile

    required property blockDetails details
    required property BlocksShelf blocks
    readonly property real pictureHeight: grid.pictureHeight
    readonly property bool hasPoster: poster.status === Image.Ready
    readonly property string spokenProblem: details.problem.length > 0 ? qsTr("Media: %1").arg(details.problem) + ". " + details.problemFiles + " " : ""

    signal mediaRequested

    Accessible.description: qsTr("%1. %2").arg(details.subtitle).arg(spokenProblem + (details.usesGlidemark ? qsTr("Glidemark preset") : help))
    help: qsTr("Drag a block onto the timeline, then ⇧⌘G to break it apart")
    picture: ground

    onHoveredChanged: if (hovered)
        blocks.prepareDrag(url)

    Rectangle {
        id: ground

        border.color: Theme.hairline
        border.width: tile.hasPoster ? 0 : 1
        color: Theme.row
        height: tile.pictureHeight
        radius: Theme.tileRadius
        width: tile.width

        LayerStack {
            anchors.fill: parent
            anchors.margins: 9
            bars: tile.details.bars
            visible: !tile.hasPoster
        }
        Image {
            id: poster

            anchors.fill: parent
            asynchronous: true
            fillMode: Image.PreserveAspectCrop
            opacity: tile.hasPoster ? 1 : 0
            smooth: true
            source: tile.details.poster.length > 0 ? "image://thumbnail/" + tile.details.poster + "?" + tile.details.posterStamp : ""
            // Of the tile's own shape, so that its rounded corners are not cut off.
            sourceSize.height: Math.round(220 * tile.grid.aspect)
            sourceSize.width: 220

            Behavior on opacity {
                NumberAnimation {
                    duration: Theme.fade
                }
            }
        }
    }
    TileFrame {
        focused: tile.focusShown
        height: tile.pictureHeight
        selected: tile.chosen
        starred: tile.star
        width: tile.width
    }
    ProblemBadge {
        files: tile.details.problemFiles
        grave: tile.details.isIncomplete
        text: tile.details.problem
        visible: text.length > 0
        x: 4
        y: tile.pictureHeight - height - 4

        onClicked: tile.mediaRequested()
    }
    Label {
        Accessible.ignored: true
        color: Theme.softText
        elide: Text.ElideMiddle
        height: 15
        small: true
        text: tile.name
        width: tile.width
        y: tile.pictureHeight + 4
    }
    Label {
        Accessible.ignored: true
        elide: Text.ElideRight
        height: 14
        secondary: true
        small: true
        text: tile.details.subtitle
        width: tile.width
        y: tile.pictureHeight + 18
    }
    Badge {
        text: qsTr("Glidemark preset")
        visible: tile.details.usesGlidemark
        width: Math.min(implicitWidth, tile.width)
        y: tile.pictureHeight + 34
    }
}
