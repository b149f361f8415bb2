import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// Shows only the images that were made from one format, while it is checked.
T.AbstractButton {
    id: chip

    required property string format
    required property bool on

    Accessible.checkable: true
    Accessible.checked: on
    Accessible.name: qsTr("Only %1").arg(format.toUpperCase())
    Accessible.role: Accessible.CheckBox
    Accessible.onPressAction: if (enabled) clicked()
    Accessible.onToggleAction: if (enabled) clicked()
    focusPolicy: Qt.StrongFocus
    implicitHeight: 18
    implicitWidth: caption.implicitWidth + 10

    Keys.onReturnPressed: chip.clicked()

    background: Rectangle {
        color: chip.on ? Theme.accentFill : chip.hovered ? Theme.controlHover : Theme.raised
        radius: 4

        FocusRing {
            around: 4
            shown: chip.visualFocus
        }
    }

    Label {
        id: caption

        anchors.centerIn: parent
        color: chip.on ? Theme.accentInk : Theme.softText
        font.pixelSize: 10
        font.weight: Font.DemiBold
        text: chip.format.toUpperCase()
    }
}
