import QtQuick
import Quillary.Controls
import Quillary.Drag
import Quillary.Library
import Quillary.Media
import Quillary.Model

/// One sound: its name and length, its waveform, which plays where it is clicked, and a handle to drag the file out.
ShelfItem {
    id: row

    required property AudioShelf audioShelf
    required property var details
    readonly property AudioPreview preview: audioShelf.preview
    readonly property bool loaded: preview.url === url
    readonly property bool playing: loaded && preview.isPlaying
    readonly property bool lit: hovered || focusShown || playing

    Accessible.description: problem.text.length > 0 ? problem.text : length.text
    dragsAnywhere: false
    help: ""

    Rectangle {
        anchors.bottomMargin: 2
        anchors.fill: parent
        border.color: Theme.accent
        border.width: row.focusShown ? 1 : 0
        color: row.chosen ? Theme.accentGround : row.lit ? Theme.row : "transparent"
        radius: Theme.controlRadius
    }
    IconButton {
        id: play

        activeFocusOnTab: false
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: -1
        focusPolicy: Qt.NoFocus
        help: row.playing ? qsTr("Stop") : qsTr("Play")
        ink: row.playing ? Theme.accentText : Theme.softText
        symbol: row.playing ? "stop.fill" : "play.fill"
        x: 1

        onClicked: row.playing ? row.preview.stop() : row.audioShelf.play(row.url, 0)
    }
    Label {
        id: title

        Accessible.ignored: true
        anchors.left: play.right
        anchors.leftMargin: 4
        anchors.right: length.left
        anchors.rightMargin: Theme.gap
        color: row.chosen ? Theme.accentText : Theme.text
        elide: Text.ElideMiddle
        height: 16
        text: row.name
        y: 4
    }
    Label {
        id: length

        anchors.right: star.left
        anchors.rightMargin: 4
        height: 16
        secondary: true
        small: true
        text: row.details ?? ""
        y: 4
    }
    Waveform {
        id: wave

        anchors.left: title.left
        anchors.right: length.right
        height: 20
        ink: row.lit ? Theme.secondary : Theme.disabled
        opacity: ready && problem.text.length === 0 ? 1 : 0
        playedInk: Theme.accent
        preview: row.preview
        progress: row.loaded ? row.preview.progress : 0
        stamp: row.stamp
        url: row.url
        y: 21

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.fade
            }
        }
    }
    Label {
        id: problem

        anchors.fill: wave
        color: Theme.warning
        small: true
        text: row.loaded && row.preview.problem.length > 0 ? row.preview.problem : wave.problem
        visible: text.length > 0
    }
    MouseArea {
        property bool moved: false
        property real pressedAt: 0

        function fraction(x: real): real {
            return Math.max(0, Math.min(1, x / width));
        }

        anchors.fill: wave
        cursorShape: Qt.PointingHandCursor
        enabled: wave.ready
        preventStealing: true

        onPositionChanged: mouse => {
            if (!moved && Math.abs(mouse.x - pressedAt) < 4)
                return;
            moved = true;
            row.audioShelf.scrub(row.url, fraction(mouse.x));
        }
        onPressed: mouse => {
            moved = false;
            pressedAt = mouse.x;
            row.grid.forceActiveFocus(Qt.MouseFocusReason);
            row.grid.currentIndex = row.index;
        }
        onReleased: mouse => {
            if (!moved)
                row.audioShelf.play(row.url, fraction(mouse.x));
        }
    }
    IconButton {
        id: star

        activeFocusOnTab: false
        anchors.right: handle.left
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: -1
        focusPolicy: Qt.NoFocus
        help: row.star ? qsTr("Remove from Favorites") : qsTr("Add to Favorites")
        ink: row.star ? Theme.favorite : Theme.secondary
        symbol: row.star ? "star.fill" : "star"

        onClicked: row.audioShelf.toggleFavorite(row.url)
    }
    Item {
        id: handle

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: -1
        height: Theme.controlHeight
        width: Theme.controlHeight

        Symbol {
            anchors.fill: parent
            color: source.dragging || over.hovered ? Theme.text : Theme.secondary
            name: "arrow.up.and.down.and.arrow.left.and.right"
            size: 17
        }
        FileDragSource {
            id: source

            anchors.fill: parent
            openHandCursor: true
            title: row.name

            onTapped: modifiers => row.grid.click(row.index, modifiers)
            onUrlRequested: request => request.url = row.audioShelf.dragFileUrl(row.url)
        }
        HoverHandler {
            id: over
        }
        ToolTip {
            hushed: source.dragging
            shown: over.hovered
            text: Wording.forEditor(qsTr("Drag into Final Cut"))
        }
    }
}
