import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// The help text of its parent, after the pointer has rested on it.
T.ToolTip {
    id: control

    property bool shown: false

    closePolicy: T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent
    delay: 700
    font.family: Theme.family
    font.pixelSize: Theme.smallSize
    implicitHeight: contentHeight + topPadding + bottomPadding
    implicitWidth: Math.min(260, implicitContentWidth + leftPadding + rightPadding)
    leftPadding: 7
    margins: 4
    padding: 4
    rightPadding: 7
    visible: shown && text.length > 0
    x: parent ? (parent.width - implicitWidth) / 2 : 0
    y: parent ? parent.height + 5 : 0

    background: Rectangle {
        border.color: Theme.outline
        color: Theme.sheet
        radius: 5
    }
    contentItem: Label {
        small: true
        text: control.text
        wrapMode: Text.Wrap
    }
}
