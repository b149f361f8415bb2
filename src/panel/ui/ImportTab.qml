import QtQuick
import Quillary.Controls
import Quillary.Model
import Quillary.Panel

/// The staging area for one image: the stage, and below it what can be told of it and done with it.
Item {
    id: tab

    required property PanelModel model
    /// A drag that would be taken is over the panel.
    required property bool targeted
    readonly property bool loaded: model.stage === PanelModel.Stage.Loaded
    /// What the stage, at least 45 % of the panel, leaves to what lies below it.
    readonly property real room: height - 0.45 * (height + Theme.headerHeight) - 2 * Theme.margin - Theme.gap
    readonly property real stripHeight: strip.wanted ? strip.fullHeight + Theme.smallGap : 0
    readonly property bool notesBrief: loadedFooter.plainHeight + loadedFooter.notesHeight + stripHeight > room
    readonly property bool stripAway: loaded && strip.wanted && loadedFooter.plainHeight + stripHeight + (notesBrief ? loadedFooter.briefNotesHeight : loadedFooter.notesHeight) > room

    Stage {
        objectName: "stagedArea"
        anchors.bottom: strip.top
        anchors.bottomMargin: strip.visible ? Theme.smallGap : 0
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.top: parent.top
        anchors.topMargin: Theme.margin
        model: tab.model
        sliding: loadedFooter.sliding
        targeted: tab.targeted

        onRemovalStopped: loadedFooter.focusCutout()
    }
    PasteStrip {
        id: strip

        anchors.bottom: loadedFooter.visible ? loadedFooter.top : hint.top
        anchors.bottomMargin: Theme.gap
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        loaded: tab.loaded
        objectName: "pasteStrip"
        panel: tab.model
        visible: wanted && !tab.stripAway
    }
    LoadedFooter {
        id: loadedFooter

        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.margin
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        model: tab.model
        notesBrief: tab.notesBrief
        stripAway: tab.stripAway
        tight: plainHeight > tab.room
        visible: tab.loaded
    }
    Label {
        id: hint

        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.margin
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        height: 30
        horizontalAlignment: Text.AlignHCenter
        secondary: true
        small: true
        text: qsTr("Videos, sounds and compound clips from Final Cut can be dragged in here too")
        visible: !tab.loaded
        wrapMode: Text.Wrap
    }
}
