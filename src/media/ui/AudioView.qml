pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Library
import Quillary.Model

/// The Audio shelf.
ShelfView {
    id: audio

    required property PanelModel model

    emptyHint: qsTr("Subfolders of Library/Audio become collections.")
    emptyLine: qsTr("Drop sound effects here, or point Library/Audio at the folders you already keep them in — subfolders become collections.")
    emptySymbol: "waveform"
    emptyTitle: qsTr("No audio yet")
    everything: qsTr("folders")
    grid.captionHeight: 34
    grid.list: true
    newCollectionFootnote: qsTr("Sounds dropped in while this collection is selected are filed here.")
    newCollectionTitle: qsTr("New audio collection")
    renameTitle: qsTr("Rename audio")
    shelf: model.audioShelf

    delegate: FileRow {
        grid: audio.grid
        symbol: "waveform"
    }
    menu: FileMenu {
        shelf: audio.shelf
    }
}
