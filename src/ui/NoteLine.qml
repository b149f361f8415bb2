import QtQuick
import Quillary.Controls

/// A symbol and a text of one or two lines, or as many as asked for, such as the result of a save; below it, if there
/// is one, a quieter text with advice. Without a text it is invisible.
Item {
    id: note

    required property string symbol
    required property string text
    property string advice: ""
    property color ink: Theme.good
    property int maximumLines: 2
    /// Whether the text is longer than its lines.
    readonly property bool cut: label.truncated

    Accessible.name: advice.length > 0 ? `${text} ${advice}` : text
    Accessible.role: Accessible.StaticText
    implicitHeight: Math.max(18, label.implicitHeight + 2) + (advisor.visible ? advisor.implicitHeight + 2 : 0)
    visible: text.length > 0

    Symbol {
        id: sign

        color: note.ink
        height: 18
        name: note.symbol
        size: 14
        width: 14
    }
    Label {
        id: label

        Accessible.ignored: true
        anchors.left: sign.right
        anchors.leftMargin: 7
        anchors.right: parent.right
        color: note.ink
        elide: Text.ElideRight
        maximumLineCount: note.maximumLines
        small: true
        text: note.text
        wrapMode: Text.Wrap
        y: lineCount > 1 ? 1 : (18 - implicitHeight) / 2
    }
    Label {
        id: advisor

        Accessible.ignored: true
        anchors.left: label.left
        anchors.right: parent.right
        anchors.top: label.bottom
        anchors.topMargin: 2
        secondary: true
        small: true
        text: note.advice
        visible: text.length > 0
        wrapMode: Text.Wrap
    }
}
