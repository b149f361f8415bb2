import QtQuick
import Quillary.Controls

/// One group of the Settings sheet: its title with an optional control at the right, an explanation below. What is
/// declared inside follows.
Column {
    id: group

    required property string title
    property string explanation: ""
    property alias control: place.data

    spacing: 10

    Item {
        height: Math.max(20, place.childrenRect.height)
        width: parent.width

        Label {
            Accessible.name: text
            Accessible.role: Accessible.Heading
            anchors.left: parent.left
            anchors.right: place.left
            anchors.rightMargin: Theme.gap
            font.weight: Font.DemiBold
            height: parent.height
            text: group.title
        }
        Item {
            id: place

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            height: childrenRect.height
            width: childrenRect.width
        }
    }
    Label {
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        lineHeight: 1.15
        secondary: true
        small: true
        text: group.explanation
        visible: text.length > 0
        width: parent.width
        wrapMode: Text.Wrap
    }
}
