import QtQuick
import Quillary.Controls

/// Text in the panel's font. One line that elides, unless `wrapMode` is set.
Text {
    property bool small: false
    property bool secondary: false

    color: secondary ? Theme.secondary : Theme.text
    elide: wrapMode === Text.NoWrap ? Text.ElideRight : Text.ElideNone
    font.family: Theme.family
    font.pixelSize: small ? Theme.smallSize : Theme.textSize
    renderType: Text.NativeRendering
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
}
