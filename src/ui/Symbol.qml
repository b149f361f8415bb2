import QtQuick
import Quillary.Controls

/// An icon by its symbol name. Decoration: what it means is told by its control.
Text {
    required property string name
    property int size: Theme.symbolSize

    Accessible.ignored: true
    color: Theme.text
    font.family: Symbols.family
    font.pixelSize: size
    horizontalAlignment: Text.AlignHCenter
    renderType: Text.NativeRendering
    text: Symbols.glyph(name)
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
}
