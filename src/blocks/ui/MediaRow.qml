import QtQuick
import Quillary.Controls
import Quillary.Model

/// One file of a block's media: whether it is there, its name, where it is.
Item {
    id: row

    required property string name
    required property int state
    required property string telling
    required property bool current
    readonly property list<string> symbols: ["checkmark.circle.fill", "exclamationmark.triangle.fill", "link", "doc.on.doc", "exclamationmark.triangle.fill"]
    readonly property list<string> words: [qsTr("Present"), qsTr("Missing"), qsTr("Moved"), qsTr("Duplicate"), qsTr("Incomplete")]
    readonly property list<color> inks: [Theme.good, Theme.danger, Theme.warning, Theme.secondary, Theme.danger]

    Accessible.description: telling
    Accessible.name: qsTr("%1, %2").arg(name).arg(words[state])
    Accessible.role: Accessible.ListItem
    implicitHeight: 34

    Rectangle {
        anchors.fill: parent
        color: Theme.accentGround
        radius: Theme.controlRadius
        visible: row.current
    }
    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        color: row.inks[row.state]
        name: row.symbols[row.state]
        size: 14
        width: 14
        x: 4
    }
    Label {
        id: status

        Accessible.ignored: true
        anchors.right: parent.right
        anchors.rightMargin: 4
        color: row.inks[row.state]
        height: 17
        small: true
        text: row.words[row.state]
        visible: row.state !== BlockMediaModel.State.Present
        width: visible ? implicitWidth : 0
        y: 1
    }
    Label {
        Accessible.ignored: true
        anchors.left: parent.left
        anchors.leftMargin: 26
        anchors.right: status.left
        anchors.rightMargin: Theme.smallGap
        elide: Text.ElideMiddle
        height: 17
        small: true
        text: row.name
        y: 1
    }
    Label {
        Accessible.ignored: true
        anchors.left: parent.left
        anchors.leftMargin: 26
        anchors.right: parent.right
        anchors.rightMargin: 4
        elide: Text.ElideMiddle
        font.pixelSize: 10
        height: 14
        secondary: true
        text: row.telling
        y: 17
    }
}
