import QtQuick
import Quillary.Controls
import Quillary.Model

/// Asks for files to put on a shelf.
Button {
    id: button

    required property PanelModel model

    function offers(kind: int): bool {
        return model.libraryKind === kind || model.libraryKind === PanelModel.LibraryKind.Blocks;
    }

    chevron: "chevron.down"
    /// Without its text, where there is little room.
    property bool brief: false
    readonly property real wholeWidth: Math.ceil(metrics.advanceWidth) + 2 * (Theme.symbolSize + 5) + 16

    help: brief ? spokenName : ""
    // Not as the tab of the same text.
    spokenName: qsTr("Import files")
    symbol: "square.and.arrow.down"
    text: brief ? "" : metrics.text

    onClicked: menu.open()

    TextMetrics {
        id: metrics

        font.family: Theme.family
        font.pixelSize: Theme.textSize
        font.weight: Font.Medium
        text: qsTr("Import")
    }
    Menu {
        id: menu

        MenuItem {
            text: qsTr("Import image files…")
            visible: button.offers(PanelModel.LibraryKind.Images)

            onTriggered: button.model.importFiles(PanelModel.LibraryKind.Images)
        }
        MenuItem {
            text: qsTr("Import sounds…")
            visible: button.offers(PanelModel.LibraryKind.Audio)

            onTriggered: button.model.importFiles(PanelModel.LibraryKind.Audio)
        }
        MenuItem {
            text: qsTr("Import video files…")
            visible: button.offers(PanelModel.LibraryKind.Videos)

            onTriggered: button.model.importFiles(PanelModel.LibraryKind.Videos)
        }
        MenuItem {
            text: qsTr("Import folders…")

            onTriggered: button.model.importFolders()
        }
        MenuSeparator {
            visible: button.model.libraryKind === PanelModel.LibraryKind.Blocks
        }
        MenuItem {
            text: qsTr("Import blocks…")
            visible: button.model.libraryKind === PanelModel.LibraryKind.Blocks

            onTriggered: button.model.importFiles(PanelModel.LibraryKind.Blocks)
        }
    }
}
