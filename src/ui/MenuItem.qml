import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

T.MenuItem {
    id: control

    property string symbol: ""
    /// A quieter text at the end, such as a count.
    property string detail: ""
    property bool dangerous: false
    readonly property color ink: !enabled ? Theme.disabled : highlighted ? Theme.accentInk
                               : dangerous ? Theme.danger : Theme.text

    Accessible.name: text
    Accessible.onPressAction: if (enabled) clicked()
    implicitHeight: visible ? Theme.controlHeight : 0
    implicitWidth: implicitContentWidth

    background: Rectangle {
        color: control.highlighted ? Theme.accentFill : "transparent"
        radius: 5
    }
    contentItem: MenuItemContent {
        detail: control.subMenu ? "›" : control.detail
        detailInk: control.highlighted ? Theme.accentInk : Theme.secondary
        ink: control.ink
        symbol: control.checked ? "checkmark" : control.symbol
        text: control.text
    }
}
