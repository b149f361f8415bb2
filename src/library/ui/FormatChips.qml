pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Library
import Quillary.Model

/// A chip for each source format on the Images shelf; more than fit scroll.
ListView {
    id: chips

    required property ImagesShelf shelf
    property int widest: 110

    boundsBehavior: Flickable.StopAtBounds
    clip: contentWidth > width
    implicitHeight: 22
    implicitWidth: Math.min(contentWidth, widest)
    interactive: contentWidth > width
    model: shelf.availableFormats
    orientation: ListView.Horizontal
    spacing: 5
    visible: count > 0

    delegate: FormatChip {
        required property string modelData

        format: modelData
        on: chips.shelf.formatFilter === modelData
        y: 2

        onClicked: chips.shelf.formatFilter = on ? "" : modelData
    }
}
