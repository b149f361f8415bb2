import QtQuick
import Quillary.Controls
import Quillary.Model
import Quillary.Panel

/// The large area of the Import tab: what to do when there is nothing yet, what went wrong, or the image.
Item {
    id: stage

    required property PanelModel model
    required property bool targeted
    /// The edge of the cut-out is being dragged.
    required property bool sliding
    readonly property bool cutting: model.cutoutProgress === PanelModel.CutoutProgress.Working
    readonly property bool loaded: model.stage === PanelModel.Stage.Loaded
    readonly property bool failed: model.stage === PanelModel.Stage.Failed

    /// The user gave the cut-out up.
    signal removalStopped

    function stopRemoval() {
        stage.model.stopRemoval();
        stage.removalStopped();
    }

    Rectangle {
        anchors.fill: parent
        color: stage.targeted ? Theme.targeted : Theme.stage
        radius: Theme.stageRadius
        visible: !stage.loaded
    }
    DashedOutline {
        anchors.fill: parent
        color: Theme.outline
        radius: Theme.stageRadius
        visible: !stage.loaded && !stage.targeted
    }
    Message {
        anchors.fill: parent
        hint: stage.failed ? stage.model.failureHint : qsTr("Videos, sounds and Final Cut compound clips can be dragged in too")
        line: stage.failed ? "" : Wording.forSystem(qsTr("⌘V, or drag one in"))
        symbol: stage.failed ? "exclamationmark.triangle" : "photo.on.rectangle.angled"
        symbolInk: stage.failed ? Theme.warning : Theme.secondary
        title: stage.failed ? stage.model.failureMessage : qsTr("Paste an image")
        visible: !stage.loaded && !stage.model.staging

        Button {
            anchors.horizontalCenter: parent?.horizontalCenter
            objectName: "goBack"
            symbol: "arrow.uturn.backward"
            text: qsTr("Back to “%1”").arg(stage.model.nameBefore)
            visible: stage.model.nameBefore.length > 0
            width: Math.min(implicitWidth, parent?.width ?? implicitWidth)

            onClicked: stage.model.goBack()
        }
    }
    StagedPicture {
        anchors.fill: parent
        model: stage.model
        sliding: stage.sliding
        visible: stage.loaded
    }
    Rectangle {
        anchors.fill: parent
        border.color: stage.targeted ? Theme.accent : Qt.rgba(Theme.ink.r, Theme.ink.g, Theme.ink.b, 0.08)
        border.width: stage.targeted ? 2 : 1
        color: "transparent"
        radius: Theme.stageRadius
        visible: stage.loaded || stage.targeted
    }
    Working {
        anchors.centerIn: parent
        text: qsTr("Reading the image…")
        visible: stage.model.staging
    }
    Working {
        anchors.centerIn: parent
        stop: qsTr("Stop cutting out")
        text: qsTr("Cutting out…")
        visible: stage.cutting

        onStopRequested: stage.stopRemoval()
    }
    Shortcut {
        enabled: stage.cutting
        sequence: "Esc"

        onActivated: stage.stopRemoval()
    }
}
