import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

T.ProgressBar {
    id: control

    required property string spokenName

    Accessible.name: spokenName
    Accessible.role: Accessible.ProgressBar
    implicitHeight: 4
    implicitWidth: 100

    background: Rectangle {
        color: Theme.control
        radius: 2
    }
    contentItem: Item {
        Rectangle {
            color: Theme.good
            height: parent.height
            radius: 2
            width: control.position * parent.width
        }
    }
}
