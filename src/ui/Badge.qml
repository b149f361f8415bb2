import QtQuick
import Quillary.Controls

/// A short fact on a small ground.
Rectangle {
    property alias text: label.text

    color: Theme.raised
    implicitHeight: 17
    implicitWidth: label.implicitWidth + 10
    radius: 4

    Label {
        id: label

        anchors.fill: parent
        anchors.leftMargin: 5
        anchors.rightMargin: 5
        color: Theme.softText
        font.pixelSize: 10
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
    }
}
