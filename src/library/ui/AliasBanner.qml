import QtQuick
import Quillary.Controls
import Quillary.Model

/// Tells of aliases whose targets have to be granted first; no height while there are none.
Item {
    id: banner

    required property BlockedAliases aliases

    height: visible ? 34 : 0
    visible: aliases.blockedAliasCount > 0

    Rectangle {
        anchors.fill: parent
        anchors.bottomMargin: 6
        color: Theme.raised
        radius: Theme.controlRadius
    }
    NoteLine {
        anchors.left: parent.left
        anchors.leftMargin: Theme.gap
        anchors.right: allow.left
        anchors.rightMargin: Theme.gap
        ink: Theme.warning
        symbol: "lock.open"
        text: banner.visible ? qsTr("An alias here points outside your library folder") : ""
        y: 5
    }
    TextButton {
        id: allow

        anchors.right: parent.right
        anchors.rightMargin: Theme.gap
        text: qsTr("Allow %n folder(s)", "", banner.aliases.blockedAliasCount)
        y: 4

        onClicked: banner.aliases.grantAccessToBlockedAlias()
    }
}
