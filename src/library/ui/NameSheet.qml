import QtQuick
import Quillary.Controls

/// Asks for a name.
Sheet {
    id: sheet

    required property string action
    property string footnote: ""

    signal named(string name)

    function ask(name: string) {
        field.text = name;
        open();
        field.forceActiveFocus(Qt.PopupFocusReason);
        field.selectAll();
    }
    function finish() {
        const name = field.text.trim();
        if (name.length === 0)
            return;
        close();
        named(name);
    }

    TextField {
        id: field

        focus: true
        placeholderText: qsTr("Name")
        spokenName: qsTr("Name")
        width: parent.width

        onAccepted: sheet.finish()
    }
    Label {
        secondary: true
        small: true
        text: sheet.footnote
        visible: text.length > 0
        width: parent.width
        wrapMode: Text.Wrap
    }
    Row {
        anchors.right: parent.right
        spacing: Theme.smallGap

        Button {
            text: qsTr("Cancel")

            onClicked: sheet.close()
        }
        Button {
            enabled: field.text.trim().length > 0
            prominent: true
            text: sheet.action

            onClicked: sheet.finish()
        }
    }
}
