pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls

/// A button that shows which of a few numbers holds; pressed, it offers them all in a menu.
Button {
    id: picker

    required property list<int> choices
    /// What the choices are called; by default their digits.
    property list<string> labels: []
    /// May be none of the choices: then no entry bears the mark.
    required property int choice
    required property string label

    signal activated(int choice)

    chevron: "chevron.up.chevron.down"
    spokenName: qsTr("%1: %2").arg(label).arg(text)
    text: `${choice}`

    onClicked: menu.open()

    Menu {
        id: menu

        objectName: "choices"

        Repeater {
            model: picker.choices

            MenuItem {
                required property int index
                required property int modelData
                readonly property bool current: modelData === picker.choice

                Accessible.checkable: true
                Accessible.checked: current
                symbol: current ? "checkmark" : ""
                text: index < picker.labels.length ? picker.labels[index] : `${modelData}`

                onTriggered: picker.activated(modelData)
            }
        }
    }
}
