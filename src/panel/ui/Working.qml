import QtQuick
import Quillary.Controls

/// Tells, over the stage, what is being worked on.
Rectangle {
    id: working

    required property string text
    /// What the button that ends the work is called; without it there is none.
    property string stop: ""

    signal stopRequested

    Accessible.name: text
    Accessible.role: Accessible.Animation
    color: Theme.shade
    implicitHeight: 30
    implicitWidth: row.implicitWidth + (stopper.visible ? 38 : 24)
    radius: height / 2

    Row {
        id: row

        anchors.verticalCenter: parent.verticalCenter
        height: parent.height
        spacing: 9
        x: 12

        BusyIndicator {
            anchors.verticalCenter: parent.verticalCenter
            ink: "#FFFFFF"
        }
        Label {
            Accessible.ignored: true
            color: "#FFFFFF"
            height: parent.height
            text: working.text
        }
    }
    IconButton {
        id: stopper

        anchors.right: parent.right
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        help: working.stop
        ink: "#FFFFFF"
        objectName: "stop"
        symbol: "xmark"
        symbolSize: 15
        visible: working.stop.length > 0

        onClicked: working.stopRequested()
    }
}
