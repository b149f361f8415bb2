pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls

/// Files, each with its folder and, where there is one, a reason. All of it can be copied as text.
Sheet {
    id: sheet

    required property var files
    /// In the order of the files; may be empty.
    required property var reasons

    signal copyRequested(string text)

    widest: 420

    onOpened: done.forceActiveFocus(Qt.PopupFocusReason)

    function asText(): string {
        const lines = [];
        for (let at = 0; at < files.length; ++at)
            lines.push(at < reasons.length ? `${files[at]}: ${reasons[at]}` : files[at]);
        return lines.join("\n");
    }

    ListView {
        id: list

        Accessible.name: sheet.title
        Accessible.role: Accessible.List
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        height: Math.min(contentHeight, Math.max(80, (sheet.parent?.height ?? 0) - 190))
        model: sheet.files
        objectName: "fileList"
        spacing: Theme.smallGap
        width: parent.width

        delegate: Column {
            id: row

            required property int index
            required property string modelData
            readonly property string reason: row.index < sheet.reasons.length ? sheet.reasons[row.index] : ""

            Accessible.description: reason
            Accessible.name: modelData
            Accessible.role: Accessible.ListItem
            width: ListView.view?.width ?? 0

            Label {
                Accessible.ignored: true
                elide: Text.ElideMiddle
                small: true
                text: row.modelData.slice(row.modelData.lastIndexOf("/") + 1)
                width: parent.width
            }
            Label {
                Accessible.ignored: true
                secondary: true
                small: true
                text: row.reason.length > 0 ? row.reason : row.modelData.slice(0, Math.max(0, row.modelData.lastIndexOf("/")))
                visible: text.length > 0
                width: parent.width
                wrapMode: Text.Wrap
            }
        }
    }
    Item {
        height: Theme.controlHeight
        width: parent.width

        Button {
            objectName: "copyList"
            text: qsTr("Copy List")

            onClicked: sheet.copyRequested(sheet.asText())
        }
        Button {
            id: done

            anchors.right: parent.right
            prominent: true
            text: qsTr("Done")

            onClicked: sheet.close()
        }
    }
}
