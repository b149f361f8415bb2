import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// A switch. Its owner keeps the value: `on` shows it, `requested` asks for the other one.
T.AbstractButton {
    id: control

    required property bool on
    required property string spokenName

    signal requested(bool on)

    Accessible.checkable: true
    Accessible.checked: on
    Accessible.name: spokenName
    Accessible.role: Accessible.CheckBox
    Accessible.onPressAction: if (enabled) clicked()
    Accessible.onToggleAction: if (enabled) clicked()
    focusPolicy: Qt.StrongFocus
    implicitHeight: 20
    implicitWidth: 34

    onClicked: requested(!on)
    Keys.onEnterPressed: control.clicked()
    Keys.onReturnPressed: control.clicked()

    background: Rectangle {
        color: control.on ? (control.hovered ? Theme.accentHover : Theme.accent)
                          : control.hovered ? Theme.controlHover : Theme.control
        radius: height / 2

        FocusRing {
            around: parent.height / 2
            shown: control.visualFocus
        }
    }
    contentItem: Item {
        Rectangle {
            color: control.on ? Theme.accentInk : Theme.secondary
            height: 16
            radius: 8
            width: 16
            x: control.on ? parent.width - width - 2 : 2
            y: (parent.height - height) / 2

            Behavior on x {
                NumberAnimation {
                    duration: Theme.quick
                }
            }
        }
    }
}
