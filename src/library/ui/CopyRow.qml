import QtQuick
import Quillary.Controls

/// A shelf in the offer to copy: its name, how many files it holds, and whether it goes along. On for each that has any.
Item {
    id: row

    required property string label
    required property int count
    property bool on: count > 0

    height: 20
    width: parent?.width ?? 0

    onCountChanged: on = count > 0

    Label {
        Accessible.ignored: true
        height: parent.height
        text: row.label
    }
    Label {
        Accessible.ignored: true
        anchors.right: toggle.left
        anchors.rightMargin: Theme.gap
        height: parent.height
        secondary: true
        small: true
        text: qsTr("%n file(s)", "", row.count)
    }
    Toggle {
        id: toggle

        anchors.right: parent.right
        objectName: row.label
        on: row.on
        spokenName: qsTr("%1, %2").arg(row.label).arg(row.count)

        onRequested: on => row.on = on
    }
}
