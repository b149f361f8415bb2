import QtQuick
import Quillary.Controls
import Quillary.Model
import Quillary.Panel

/// Below the staged image: its name, its facts, what is to be noted of it, and what can be done with it.
Column {
    id: footer

    required property PanelModel model
    readonly property bool sliding: row.sliding
    /// How the footer makes room for the stage: notes in one line, a button in place of the strip of the last pictures,
    /// the way to a cut-out beside the other actions.
    property bool notesBrief: false
    property bool stripAway: false
    property bool tight: false
    /// Without notes, when nothing makes room.
    readonly property real plainHeight: nameField.height + facts.height + 2 * Theme.controlHeight + 3 * spacing
    /// What the notes add, whole and in one line.
    readonly property real notesHeight: notes.fullHeight > 0 ? notes.fullHeight + spacing : 0
    readonly property real briefNotesHeight: notes.fullHeight > 0 ? notes.briefHeight + spacing : 0
    readonly property bool together: model.hasCutout || tight

    /// Gives the keyboard back to the control that began the cut-out.
    function focusCutout() {
        cutter.forceActiveFocus(Qt.TabFocusReason);
    }

    spacing: Theme.smallGap

    IntakeNameField {
        id: nameField

        name: footer.model.stagedName
        width: parent.width

        onCommit: draft => footer.model.renameCurrent(draft)
    }
    Connections {
        function onNameWanted() {
            nameField.finish();
        }
        /// What was typed since is no name for the next image.
        function onStagingChanged() {
            if (!footer.model.staging)
                nameField.giveUp();
        }

        target: footer.model
    }
    Item {
        id: facts

        height: 20
        width: parent.width

        FactsLine {
            anchors.left: parent.left
            anchors.right: history.visible ? history.left : parent.right
            anchors.rightMargin: history.visible ? 4 : 0
            model: footer.model
        }
        HistoryButton {
            id: history

            anchors.right: parent.right
            panel: footer.model
            visible: footer.stripAway
        }
    }
    StagedNotes {
        id: notes

        brief: footer.notesBrief
        model: footer.model
        width: parent.width
    }
    /// Before there is a cut-out, the way to one.
    Row {
        id: before

        height: Theme.controlHeight
        visible: !footer.together
        width: parent.width

        CutoutButton {
            id: cutter

            brief: footer.model.hasCutout ? footer.width < 350 : footer.tight
            model: footer.model
            parent: footer.together ? actions : before
        }
    }
    CutoutRow {
        id: row

        model: footer.model
        visible: footer.model.hasCutout
        width: parent.width
    }
    Item {
        height: Theme.controlHeight
        width: parent.width

        Row {
            id: actions

            spacing: Theme.smallGap

            Button {
                text: qsTr("Paste")

                onClicked: footer.model.paste()
            }
            Button {
                text: qsTr("Clear")

                onClicked: footer.model.clear()
            }
        }
        Button {
            anchors.right: parent.right
            enabled: !footer.model.staging
            prominent: true
            text: qsTr("Save to Library")

            onClicked: footer.model.saveCurrentToLibrary()
        }
    }
}
