import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// A thin bar that shows while there is something to scroll.
T.ScrollBar {
    id: control

    // What it scrolls is moved by its own keys.
    Accessible.ignored: true
    implicitHeight: 8
    implicitWidth: 8
    minimumSize: 0.08
    padding: 2
    visible: size < 1

    contentItem: Rectangle {
        color: control.pressed ? Theme.secondary : Theme.controlHover
        implicitHeight: 4
        implicitWidth: 4
        opacity: control.active || control.hovered ? 1 : 0.6
        radius: 2
    }
}
