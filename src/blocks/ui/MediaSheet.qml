pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Blocks
import Quillary.Controls
import Quillary.Model

/// Lists the media of a block, and offers what can be done about them.
Sheet {
    id: sheet

    required property BlockCare care
    required property BlockExportJob job
    required property FileActions actions
    property string url: ""
    readonly property BlockMediaModel media: care.media
    readonly property bool packing: job.stage === BlockExportJob.Stage.Working
    readonly property bool packed: job.stage === BlockExportJob.Stage.Done
    readonly property bool failed: job.stage === BlockExportJob.Stage.Failed

    function showMedia(blockUrl: string) {
        job.reset();
        url = blockUrl;
        care.show(blockUrl);
        open();
        done.forceActiveFocus(Qt.PopupFocusReason);
    }

    objectName: "mediaSheet"
    title: qsTr("Media of “%1”").arg(media.name)
    widest: 340

    onAboutToHide: job.stop()

    Label {
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        secondary: true
        small: true
        text: sheet.media.summary
        width: parent.width
    }
    ListView {
        id: list

        Accessible.name: qsTr("Media")
        Accessible.role: Accessible.List
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        height: Math.max(30, Math.min(contentHeight, 190))
        keyNavigationEnabled: true
        model: sheet.media
        objectName: "mediaList"
        width: parent.width

        T.ScrollBar.vertical: ScrollBar {}
        delegate: MediaRow {
            current: ListView.isCurrentItem && list.activeFocus
            width: ListView.view.width - 8
        }
    }
    Label {
        secondary: true
        small: true
        text: qsTr("This block uses no media.")
        visible: sheet.media.count === 0 && !sheet.care.looking
        width: parent.width
    }
    ProgressBar {
        spokenName: qsTr("Making the folder")
        value: Math.max(0, sheet.job.progress)
        visible: sheet.packing
        width: parent.width
    }
    NoteLine {
        ink: sheet.failed ? Theme.warning : Theme.good
        maximumLines: 4
        symbol: sheet.failed ? "exclamationmark.triangle.fill" : "checkmark.circle.fill"
        text: sheet.failed ? sheet.job.outcome : qsTr("Made the folder “%1”").arg(sheet.job.outcome)
        visible: sheet.packed || sheet.failed
        width: parent.width
    }
    Flow {
        layoutDirection: Qt.RightToLeft
        spacing: Theme.smallGap
        width: parent.width

        Button {
            id: done

            text: sheet.packing ? qsTr("Stop") : qsTr("Done")

            onClicked: sheet.packing ? sheet.job.stop() : sheet.close()
        }
        Button {
            enabled: !sheet.care.looking && !sheet.packing
            objectName: "useFound"
            prominent: true
            text: qsTr("Use Found Files")
            visible: sheet.media.moved > 0

            onClicked: sheet.care.useFoundFiles()
        }
        Button {
            enabled: !sheet.packing && sheet.media.missing === 0
            help: qsTr("Makes a folder with the block and copies of all its media, to be carried elsewhere")
            objectName: "makePortable"
            text: qsTr("Make Portable…")
            visible: !sheet.packed

            onClicked: sheet.job.makePortable(sheet.url)
        }
        Button {
            text: qsTr("Show in Files")
            visible: sheet.packed

            onClicked: sheet.actions.showInFiles([sheet.job.output])
        }
    }
}
