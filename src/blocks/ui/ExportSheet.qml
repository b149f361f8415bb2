import QtQuick
import Quillary.Controls
import Quillary.Model

/// Asks how a block is to be written for another editor, and tells what came of it.
Sheet {
    id: sheet

    required property BlockExportJob job
    required property FileActions actions
    property string url: ""
    property string name: ""
    readonly property bool over: job.stage === BlockExportJob.Stage.Done || job.stage === BlockExportJob.Stage.Failed
    readonly property bool working: job.stage === BlockExportJob.Stage.Working
    property int format: BlockExportJob.Format.Fcpxml
    property bool relative: false

    function ask(blockUrl: string, blockName: string) {
        job.reset();
        url = blockUrl;
        name = blockName;
        open();
        write.forceActiveFocus(Qt.PopupFocusReason);
    }

    objectName: "exportSheet"
    title: qsTr("Export “%1”").arg(name)
    widest: 330

    onAboutToHide: job.stop()

    SegmentedControl {
        currentIndex: sheet.format
        enabled: !sheet.working
        fill: true
        labels: [qsTr("FCPXML 1.10"), qsTr("OpenTimelineIO")]
        objectName: "exportFormat"
        spokenName: qsTr("Format")
        visible: !sheet.over
        width: parent.width

        onActivated: index => sheet.format = index
    }
    Told {
        text: sheet.format === BlockExportJob.Format.Fcpxml ? qsTr("For editors that read FCPXML up to version 1.10. Titles and effects stay; what only newer versions know is left out.") : qsTr("For editors that read OpenTimelineIO. Flat tracks with one clip for each piece of media. Markers, roles and even speeds stay; titles and effects are left out.")
        visible: !sheet.over
    }
    Item {
        height: 20
        visible: !sheet.over
        width: parent.width

        Label {
            Accessible.ignored: true
            height: parent.height
            text: qsTr("Media relative to the export")
        }
        Toggle {
            anchors.right: parent.right
            enabled: !sheet.working
            objectName: "exportRelative"
            on: sheet.relative
            spokenName: qsTr("Media relative to the export")

            onRequested: on => sheet.relative = on
        }
    }
    NoteLine {
        ink: sheet.job.stage === BlockExportJob.Stage.Failed ? Theme.warning : Theme.good
        maximumLines: 4
        symbol: sheet.job.stage === BlockExportJob.Stage.Failed ? "exclamationmark.triangle.fill" : "checkmark.circle.fill"
        text: sheet.job.stage === BlockExportJob.Stage.Failed ? sheet.job.outcome : qsTr("Wrote %1").arg(sheet.job.outcome)
        visible: sheet.over
        width: parent.width
    }
    Told {
        text: sheet.job.leftOut.length > 0 ? qsTr("Left out:") : qsTr("Nothing was left out.")
        visible: sheet.job.stage === BlockExportJob.Stage.Done
    }
    ListView {
        Accessible.name: qsTr("Left out")
        Accessible.role: Accessible.List
        activeFocusOnTab: count > 0
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        height: Math.min(contentHeight, 170)
        model: sheet.job.leftOut
        objectName: "leftOut"
        spacing: 4
        visible: sheet.job.stage === BlockExportJob.Stage.Done && count > 0
        width: parent.width

        delegate: Told {
            required property string modelData

            Accessible.role: Accessible.ListItem
            color: Theme.softText
            text: "•  " + modelData
            width: ListView.view.width
        }
    }
    Row {
        anchors.right: parent.right
        spacing: Theme.smallGap

        BusyIndicator {
            anchors.verticalCenter: parent.verticalCenter
            visible: sheet.working
        }
        Button {
            objectName: "exportShow"
            text: qsTr("Show in Files")
            visible: sheet.job.stage === BlockExportJob.Stage.Done

            onClicked: sheet.actions.showInFiles([sheet.job.output])
        }
        Button {
            text: sheet.over ? qsTr("Done") : qsTr("Cancel")

            onClicked: sheet.close()
        }
        Button {
            id: write

            enabled: !sheet.working
            objectName: "exportWrite"
            prominent: true
            text: qsTr("Export…")
            visible: !sheet.over

            onClicked: sheet.job.exportBlock(sheet.url, sheet.format, sheet.relative)
        }
    }

    component Told: Label {
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        lineHeight: 1.1
        secondary: true
        small: true
        width: parent?.width ?? 0
        wrapMode: Text.Wrap
    }
}
