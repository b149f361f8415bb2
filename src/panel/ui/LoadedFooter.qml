import QtQuick
import Quillary.Controls
import Quillary.Model
import Quillary.Panel

/// Below the staged image: its name, its facts, what is to be noted of it, and what can be done with it.
Column {
    id: footer

    required property PanelModel model

    spacing: Theme.smallGap

    IntakeNameField {
        name: footer.model.stagedName
        width: parent.width

        onCommit: draft => footer.model.renameCurrent(draft)
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
        symbol: "checkmark.circle.fill"
        text: footer.model.librarySaveNote
        width: parent.width
    }
    CutoutRow {
        model: footer.model
        visible: footer.model.hasCutout
        width: parent.width
    }
    Item {
        height: Theme.controlHeight
        width: parent.width

        Row {
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
