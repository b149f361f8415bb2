pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Media
import Quillary.Model

/// The Audio shelf: sounds one below the other, with their waveforms. The arrow keys move, Space plays and stops, Right
/// plays again, Left stops.
ShelfView {
    id: audio

    required property PanelModel model
    readonly property AudioShelf sounds: model.audioShelf

    function currentUrl(): string {
        return sounds.visible.urlAt(grid.currentIndex);
    }
    function handle(key: int): bool {
        const url = currentUrl();
        const playing = sounds.preview.isPlaying && sounds.preview.url === url;
        if (url.length === 0)
            return false;
        if (key === Qt.Key_Left || (key === Qt.Key_Space && playing))
            sounds.preview.stop();
        else if (key === Qt.Key_Right || key === Qt.Key_Space)
            sounds.play(url, 0);
        else
            return false;
        return true;
    }

    // Nothing is heard without a button beside it that stops it.
    onVisibleChanged: if (!visible)
        sounds?.preview.stop()

    emptyHint: qsTr("you already keep them in — subfolders become collections.")
    emptyLine: qsTr("Drop sound effects here, or point Library/Audio at the folders")
    emptySymbol: "waveform"
    emptyTitle: qsTr("No audio yet")
    everything: qsTr("folders")
    grid.captionHeight: 46
    grid.keyTarget: keys
    grid.list: true
    newCollectionFootnote: qsTr("Audio dropped in while this collection is selected is filed here.")
    newCollectionTitle: qsTr("New audio collection")
    renameTitle: qsTr("Rename sound")
    shelf: sounds

    beforeStar: Picker {
        choice: audio.sounds.audioSort
        choices: [AudioShelf.AudioSort.Recent, AudioShelf.AudioSort.Name, AudioShelf.AudioSort.Shortest, AudioShelf.AudioSort.Longest]
        label: qsTr("Sort")
        labels: [audio.sounds.label(AudioShelf.AudioSort.Recent), audio.sounds.label(AudioShelf.AudioSort.Name), audio.sounds.label(AudioShelf.AudioSort.Shortest), audio.sounds.label(AudioShelf.AudioSort.Longest)]
        text: audio.sounds.label(audio.sounds.audioSort)

        onActivated: sort => audio.sounds.audioSort = sort
    }
    delegate: AudioRow {
        audioShelf: audio.sounds
        grid: audio.grid
    }
    footer: AudioFooter {
        empty: audio.nothingSaved
        shelf: audio.sounds
        width: parent.width
    }
    menu: FileMenu {
        actions: audio.model.fileActions
        shelf: audio.shelf
    }

    Item {
        id: keys

        Keys.onPressed: event => event.accepted = !(event.modifiers & (Qt.ControlModifier | Qt.ShiftModifier)) && audio.handle(event.key)
    }
}
