import QtQuick
import Quillary.Controls
import Quillary.Model

/// Below the sounds: what can be done, how many lengths are still being read, how loud the preview is.
Item {
    id: footer

    required property AudioShelf shelf
    required property bool empty
    readonly property int remaining: shelf.durationsRemaining

    implicitHeight: hint.height + volume.height + 10

    Label {
        id: hint

        height: implicitHeight
        secondary: true
        small: true
        text: footer.empty ? Wording.forSystem(qsTr("Drop audio files, or add them in the Finder")) : Wording.forEditor(qsTr("Click to play · drag the waveform to scrub · drag the handle into Final Cut"))
        width: parent.width
        wrapMode: Text.Wrap
        y: 4
    }
    Label {
        id: reading

        anchors.verticalCenter: volume.verticalCenter
        secondary: true
        small: true
        text: qsTr("reading %n", "", footer.remaining)
        visible: footer.remaining > 0 && !stop.visible
    }
    IconButton {
        id: stop

        anchors.verticalCenter: volume.verticalCenter
        focusPolicy: Qt.NoFocus
        help: qsTr("Stop")
        ink: Theme.accentText
        objectName: "stopSound"
        symbol: "stop.fill"
        visible: footer.shelf.preview.isPlaying

        onClicked: footer.shelf.preview.stop()
    }
    Label {
        anchors.left: stop.right
        anchors.leftMargin: 4
        anchors.right: quiet.left
        anchors.rightMargin: Theme.gap
        anchors.verticalCenter: volume.verticalCenter
        elide: Text.ElideMiddle
        secondary: true
        small: true
        text: footer.shelf.preview.name
        visible: stop.visible
    }
    ProgressBar {
        anchors.left: reading.right
        anchors.leftMargin: Theme.smallGap
        anchors.verticalCenter: volume.verticalCenter
        spokenName: reading.text
        value: 1 - footer.remaining / Math.max(1, footer.shelf.durationsWanted)
        visible: reading.visible
        width: 60
    }
    Symbol {
        id: quiet

        anchors.right: volume.left
        anchors.rightMargin: Theme.smallGap
        anchors.verticalCenter: volume.verticalCenter
        color: Theme.secondary
        name: "speaker.wave.1.fill"
        size: 16
    }
    Slider {
        id: volume

        anchors.right: loud.left
        anchors.rightMargin: Theme.smallGap
        anchors.top: hint.bottom
        spokenName: qsTr("Preview volume")
        value: footer.shelf.preview.volume
        width: 110

        onMoved: footer.shelf.preview.volume = value
    }
    Symbol {
        id: loud

        anchors.right: parent.right
        anchors.verticalCenter: volume.verticalCenter
        color: Theme.secondary
        name: "speaker.wave.2.fill"
        size: 16
    }
}
