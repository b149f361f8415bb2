import QtQuick
import Quillary.Controls
import Quillary.Model

/// The setting of what texts call the editor: one of a few names, or one's own in a field below.
SettingsGroup {
    id: group

    required property SettingsModel settings
    /// Another name is wanted, and not given yet.
    property bool asking: false
    readonly property var names: settings.editorNames
    readonly property int own: names.length
    /// The row of the name that holds; of an own name that of "Other…".
    readonly property int chosen: {
        let at = 0;
        while (at < own && names[at] !== settings.editorName)
            ++at;
        return at;
    }
    readonly property list<int> rows: {
        const all = [];
        for (let at = 0; at <= own; ++at)
            all.push(at);
        return all;
    }

    explanation: qsTr("The program that you drag into, as it is called in the panel.")
    title: qsTr("Editor")

    control: Picker {
        choice: group.asking ? group.own : group.chosen
        choices: group.rows
        label: group.title
        labels: [...group.names, qsTr("Other…")]
        objectName: "editorName"
        text: group.settings.editorName
        width: Math.min(implicitWidth, 170)

        onActivated: index => {
            group.asking = index === group.own;
            if (group.asking)
                name.forceActiveFocus(Qt.TabFocusReason);
            else
                group.settings.editorName = group.names[index];
        }
    }

    TextField {
        id: name

        objectName: "ownEditorName"
        placeholderText: qsTr("Name of your editor")
        spokenName: qsTr("Name of your editor")
        text: group.chosen === group.own ? group.settings.editorName : ""
        visible: group.asking || group.chosen === group.own
        width: parent.width

        onEditingFinished: {
            // The name first: the field stays visible for it.
            if (text.trim().length > 0)
                group.settings.editorName = text;
            group.asking = false;
        }
    }
}
