import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// One line of text in a well, with an optional symbol before it.
T.TextField {
    id: control

    required property string spokenName
    property string symbol: ""

    Accessible.name: spokenName
    color: enabled ? Theme.text : Theme.disabled
    font.family: Theme.family
    font.pixelSize: Theme.textSize
    implicitHeight: Theme.controlHeight
    implicitWidth: 160
    leftPadding: symbol.length > 0 ? 28 : 8
    placeholderTextColor: Theme.secondary
    renderType: Text.NativeRendering
    rightPadding: 8
    selectByMouse: true
    selectedTextColor: Theme.accentInk
    selectionColor: Theme.accentFill
    verticalAlignment: TextInput.AlignVCenter

    // Hidden it would go on to take the keys.
    onVisibleChanged: if (!visible)
        focus = false

    background: Rectangle {
        border.color: control.activeFocus ? Theme.accent : control.hovered ? Theme.outline : Theme.hairline
        border.width: 1
        color: Theme.field
        radius: Theme.controlRadius
    }

    Symbol {
        color: Theme.secondary
        height: parent.height
        name: control.symbol
        size: 15
        visible: control.symbol.length > 0
        width: 15
        x: 8
    }
    Label {
        color: Theme.secondary
        height: parent.height
        text: control.placeholderText
        visible: control.length === 0 && control.preeditText.length === 0
        width: parent.width - x - control.rightPadding
        x: control.leftPadding
    }
}
