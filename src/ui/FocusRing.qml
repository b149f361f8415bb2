import QtQuick
import Quillary.Controls

/// The ring around the control that has the keyboard; lies around its parent.
Rectangle {
    /// The corner radius of the parent.
    property real around: Theme.controlRadius
    property bool shown: false

    anchors.fill: parent
    anchors.margins: -2
    border.color: Theme.accent
    border.width: 2
    color: "transparent"
    radius: around + 2
    visible: shown
    z: 2
}
