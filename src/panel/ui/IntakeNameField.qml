import QtQuick
import Quillary.Controls

/// Edits a name: Return and losing the focus commit what was typed, Escape brings the name back.
TextField {
    id: field

    required property string name
    /// What is being edited; follows `name` while the field has no focus.
    property alias draft: field.text

    signal commit(string draft)

    /// Ends the editing without a commit.
    function giveUp() {
        draft = name;
        focus = false;
    }
    /// Ends the editing with a commit.
    function finish() {
        focus = false;
    }
    function showName() {
        draft = name;
        cursorPosition = 0;
    }

    placeholderText: qsTr("Name")
    spokenName: qsTr("Name")
    symbol: "pencil"

    onActiveFocusChanged: {
        if (activeFocus) {
            draft = name;
            selectAll();
            return;
        }
        commit(draft);
        showName();
    }
    onNameChanged: {
        if (!activeFocus)
            showName();
    }
    Component.onCompleted: showName()

    Keys.onEscapePressed: giveUp()
    onAccepted: focus = false
}
