import QtQuick
import Quillary.Controls

/// Tells, over the stage, what is being worked on.
Rectangle {
    id: working

    required property string text

    Accessible.name: text
    Accessible.role: Accessible.Animation
    color: Theme.shade
    implicitHeight: 30
    implicitWidth: row.implicitWidth + 24
    radius: height / 2

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 9

        BusyIndicator {
            anchors.verticalCenter: parent.verticalCenter
            ink: "#FFFFFF"
        }
        Label {
            Accessible.ignored: true
            color: "#FFFFFF"
            text: working.text
        }
    }
}
