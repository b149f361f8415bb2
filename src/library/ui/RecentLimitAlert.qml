import QtQuick
import Quillary.Controls
import Quillary.Model

/// Warns before a limit for Recent is set. Open while a limit is pending; Escape keeps what was stored.
Sheet {
    id: alert

    required property SettingsModel settings

    title: qsTr("Old projects may stop opening properly")
    visible: settings.pendingLimit > 0
    widest: 320

    onAboutToHide: settings.keepNeverDelete()
    onOpened: keep.forceActiveFocus(Qt.PopupFocusReason)

    Label {
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        color: Theme.softText
        lineHeight: 1.1
        small: true
        text: qsTr("Deleting files from Recent cannot be undone. If Final Cut is set to “Leave files in place”, any project using a deleted graphic will show it as missing — often months later.\n\nKeep Never delete if you want old projects to always open. Or set Final Cut → Settings → Import → Files to “Copy to library”, which makes Final Cut keep its own copy of every graphic, and then a limit here is harmless.")
        width: parent.width
        wrapMode: Text.Wrap
    }
    Row {
        anchors.right: parent.right
        spacing: Theme.smallGap

        Button {
            dangerous: true
            objectName: "setALimit"
            text: qsTr("Set a Limit")

            onClicked: alert.settings.setALimit()
        }
        Button {
            id: keep

            objectName: "keepNeverDelete"
            prominent: true
            text: qsTr("Keep Never Delete")

            onClicked: alert.settings.keepNeverDelete()
        }
    }
}
