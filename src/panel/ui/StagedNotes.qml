pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Model

/// What is to be noted of the staged image, the most urgent first. Where there is little room one line stands for all of
/// it; pressed, it shows them whole.
Item {
    id: notes

    required property PanelModel model
    property bool brief: false
    /// What all of them take when they are whole; 0 without any.
    readonly property real fullHeight: said.length > 0 ? whole.implicitHeight : 0
    readonly property real briefHeight: said.length > 0 ? 18 : 0
    readonly property var said: {
        const all = [];
        const add = (text, advice, problem) => {
            if (text.length > 0)
                all.push({"advice": advice, "problem": problem, "text": text});
        };
        add(model.cutoutFailure, model.cutoutSuggestion, true);
        add(model.imagesShelf.note, "", model.imagesShelf.noteIsProblem);
        add(model.cutoutNote, "", true);
        add(model.resolutionWarning, "", true);
        return all;
    }

    implicitHeight: brief ? Math.min(briefHeight, fullHeight) : fullHeight
    visible: said.length > 0

    Said {
        id: whole

        visible: !notes.brief
        width: notes.width
    }
    T.AbstractButton {
        id: line

        readonly property var first: notes.said[0] ?? {"advice": "", "problem": false, "text": ""}
        readonly property bool leadsOn: notes.said.length > 1 || first.advice.length > 0 || told.cut

        Accessible.description: leadsOn ? qsTr("Show all notes") : ""
        Accessible.name: first.text
        Accessible.role: leadsOn ? Accessible.ButtonDropDown : Accessible.StaticText
        Accessible.onPressAction: clicked()
        enabled: leadsOn
        focusPolicy: Qt.StrongFocus
        height: parent.height
        objectName: "stagedNotesLine"
        visible: notes.brief
        width: parent.width

        onClicked: all.open()
        Keys.onReturnPressed: line.clicked()

        background: FocusRing {
            around: 4
            shown: line.visualFocus
        }

        NoteLine {
            id: told

            Accessible.ignored: true
            anchors.left: parent.left
            anchors.right: more.left
            anchors.rightMargin: line.leadsOn ? Theme.smallGap : 0
            ink: line.first.problem ? Theme.warning : Theme.good
            maximumLines: 1
            symbol: line.first.problem ? "exclamationmark.triangle.fill" : "checkmark.circle.fill"
            text: line.first.text
        }
        Row {
            id: more

            anchors.right: parent.right
            height: parent.height
            visible: line.leadsOn
            width: visible ? implicitWidth : 0

            Label {
                Accessible.ignored: true
                color: line.hovered ? Theme.text : Theme.softText
                height: parent.height
                small: true
                text: notes.said.length > 1 ? `+${notes.said.length - 1}` : ""
            }
            Symbol {
                color: line.hovered ? Theme.text : Theme.softText
                height: parent.height
                name: "chevron.down"
            }
        }
    }
    T.Popup {
        id: all

        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
        focus: true
        height: contentHeight + topPadding + bottomPadding
        objectName: "stagedNotes"
        padding: Theme.margin
        width: notes.width
        y: -height - 4


        background: Rectangle {
            border.color: Theme.outline
            color: Theme.sheet
            radius: 8
        }
        contentItem: Said {
            anyLines: true
        }
    }

    component Said: Column {
        id: column

        property bool anyLines: false

        spacing: Theme.smallGap

        Repeater {
            model: notes.said

            NoteLine {
                required property var modelData

                advice: modelData.advice
                ink: modelData.problem ? Theme.warning : Theme.good
                maximumLines: column.anyLines ? 12 : 4
                symbol: modelData.problem ? "exclamationmark.triangle.fill" : "checkmark.circle.fill"
                text: modelData.text
                width: column.width
            }
        }
    }
}
