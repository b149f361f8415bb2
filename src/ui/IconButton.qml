import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// A borderless button that is only a symbol. `help` is its name and its tool tip.
T.Button {
    id: control

    required property string symbol
    required property string help
    property color ink: Theme.softText
    property int symbolSize: 17

    Accessible.name: help
    Accessible.onPressAction: if (enabled) clicked()
    focusPolicy: Qt.StrongFocus
    implicitHeight: Theme.controlHeight
    implicitWidth: Theme.controlHeight

    Keys.onEnterPressed: control.clicked()
    Keys.onReturnPressed: control.clicked()

    background: Rectangle {
        color: control.down ? Theme.controlPressed : Theme.control
        opacity: control.hovered || control.down ? 1 : 0
        radius: Theme.controlRadius

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.quick
            }
        }
    }
    contentItem: Symbol {
        color: control.enabled ? control.ink : Theme.disabled
        name: control.symbol
        size: control.symbolSize
    }

    FocusRing {
        shown: control.visualFocus
    }
    ToolTip {
        hushed: control.down
        shown: control.hovered
        text: control.help
    }
}
