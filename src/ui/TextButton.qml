import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// A small button that is only its text, in the accent colour; disabled it is plain text.
T.AbstractButton {
    id: control

    Accessible.name: text
    Accessible.role: Accessible.Button
    Accessible.onPressAction: if (enabled) clicked()
    focusPolicy: Qt.StrongFocus
    implicitHeight: 20
    implicitWidth: Math.min(180, Math.ceil(implicitContentWidth))

    Keys.onReturnPressed: control.clicked()

    contentItem: Label {
        color: control.enabled ? Theme.accentText : Theme.secondary
        elide: Text.ElideMiddle
        font.underline: control.hovered
        small: true
        text: control.text
    }

    FocusRing {
        around: 3
        shown: control.visualFocus
    }
}
