import QtQuick
import Quillary.Controls
import Quillary.Model
import Quillary.Panel

/// Below the staged image: its name, its facts, what is to be noted of it, and what can be done with it.
Column {
    id: footer

    required property PanelModel model
    readonly property bool sliding: row.sliding

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
        /// What is typed is no name for the next image.
        function onStagingChanged() {
            if (footer.model.staging)
                nameField.giveUp();
        }

        target: footer.model
    }
    FactsLine {
        model: footer.model
        width: parent.width
    }
    NoteLine {
        ink: Theme.warning
        symbol: "exclamationmark.triangle.fill"
        text: footer.model.resolutionWarning
        width: parent.width
    }
    NoteLine {
        ink: footer.model.imagesShelf.noteIsProblem ? Theme.warning : Theme.good
        symbol: footer.model.imagesShelf.noteIsProblem ? "exclamationmark.triangle.fill" : "checkmark.circle.fill"
        text: footer.model.librarySaveNote
        width: parent.width
    }
    NoteLine {
        advice: footer.model.cutoutSuggestion
        ink: Theme.warning
        symbol: "exclamationmark.triangle.fill"
        text: footer.model.cutoutFailure
        width: parent.width
    }
    NoteLine {
        ink: Theme.warning
        maximumLines: 4
        symbol: "exclamationmark.triangle.fill"
        text: footer.model.cutoutNote
        width: parent.width
    }
    /// Before there is a cut-out, the way to one.
    Row {
        id: before

        height: Theme.controlHeight
        visible: !footer.model.hasCutout
        width: parent.width

        CutoutButton {
            id: cutter

            brief: footer.model.hasCutout && footer.width < 350
            model: footer.model
            parent: footer.model.hasCutout ? actions : before
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
