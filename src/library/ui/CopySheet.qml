import QtQuick
import Quillary.Controls
import Quillary.Model

/// Offers to copy the library's files to its new place.
Sheet {
    id: sheet

    required property CopyJob job

    objectName: "copySheet"
    title: qsTr("Copy your files to the new location?")
    visible: job.offered
    widest: 330

    onAboutToHide: job.decline()
    onOpened: copy.forceActiveFocus(Qt.PopupFocusReason)

    Label {
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        color: Theme.softText
        lineHeight: 1.1
        small: true
        text: qsTr("Copying leaves the originals where they are, so switching back later finds everything still there. Files already at the new location are left alone rather than duplicated.\n\nTaking Blocks always brings their media in Final Cut Elements along, even if you leave the rest of that shelf behind — moving one without the other would take them offline.")
        width: parent.width
        wrapMode: Text.Wrap
    }
    Column {
        spacing: 6
        width: parent.width

        CopyRow {
            id: images

            count: sheet.job.images
            label: qsTr("Images")
        }
        CopyRow {
            id: videos

            count: sheet.job.videos
            label: qsTr("Videos")
        }
        CopyRow {
            id: audio

            count: sheet.job.audio
            label: qsTr("Audio")
        }
        CopyRow {
            id: blocks

            count: sheet.job.blocks
            label: qsTr("Blocks")
        }
        CopyRow {
            id: recent

            count: sheet.job.recent
            label: qsTr("Recent")
        }
    }
    Row {
        anchors.right: parent.right
        spacing: Theme.smallGap

        Button {
            objectName: "dontCopy"
            text: qsTr("Don't Copy")

            onClicked: sheet.job.decline()
        }
        Button {
            id: copy

            enabled: images.on || videos.on || audio.on || blocks.on || recent.on
            objectName: "copy"
            prominent: true
            text: qsTr("Copy")

            onClicked: sheet.job.copy(images.on, videos.on, audio.on, blocks.on, recent.on)
        }
    }
}
