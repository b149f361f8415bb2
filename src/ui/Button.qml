import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// A push button: plain, `prominent` or `dangerous`, with an optional symbol before its text and, for one that opens a
/// menu, a chevron after it.
T.Button {
    id: control

    property string symbol: ""
    property string chevron: ""
    property bool prominent: false
    property bool dangerous: false
    /// Said instead of the text by screen readers.
    property string spokenName: text
    property string help: ""

    readonly property color ink: !enabled ? Theme.disabled
                               : prominent ? Theme.accentInk : dangerous ? Theme.danger : Theme.text

    Accessible.name: spokenName
    Accessible.description: help
    Accessible.onPressAction: if (enabled) clicked()
    focusPolicy: Qt.StrongFocus
    implicitHeight: Theme.controlHeight
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: text.length > 0 ? 8 : 7
    rightPadding: leftPadding

    Keys.onEnterPressed: control.clicked()
    Keys.onReturnPressed: control.clicked()

    background: Rectangle {
        color: !control.enabled ? Theme.raised
             : control.prominent ? (control.down ? Theme.accentFillPressed : control.hovered ? Theme.accentFillHover : Theme.accentFill)
             : control.dangerous && control.hovered ? Theme.dangerHover
             : control.down ? Theme.controlPressed : control.hovered ? Theme.controlHover : Theme.control
        radius: Theme.controlRadius

        FocusRing {
            shown: control.visualFocus
        }
    }
    contentItem: ButtonContent {
        chevron: control.chevron
        ink: control.ink
        symbol: control.symbol
        text: control.text
    }

    ToolTip {
        hushed: control.down
        shown: control.hovered
        text: control.help
    }
}
