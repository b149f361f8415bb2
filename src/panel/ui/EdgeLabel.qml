import QtQuick
import Quillary.Controls

/// An edge strength in words.
Label {
    /// 0 to 1.
    required property real value

    height: Theme.controlHeight
    horizontalAlignment: Text.AlignRight
    secondary: true
    text: value < 0.02 ? qsTr("off") : qsTr("tighter")
    width: 42
}
