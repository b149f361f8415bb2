import QtQuick
import Quillary.Controls
import Quillary.Model

/// What is known of the staged image: its size, where it comes from, its kind of pixels.
Item {
    id: facts

    required property PanelModel model

    Accessible.description: model.stagedOrigin
    Accessible.name: `${model.stagedDimensions}, ${model.stagedProvenance}, ${model.stagedBadge}`
    Accessible.role: Accessible.StaticText
    implicitHeight: 20

    Label {
        id: dimensions

        Accessible.ignored: true
        color: Theme.softText
        height: parent.height
        small: true
        text: facts.model.stagedDimensions
    }
    Label {
        Accessible.ignored: true
        anchors.left: dimensions.right
        anchors.leftMargin: Theme.gap
        anchors.right: badge.left
        anchors.rightMargin: Theme.gap
        elide: Text.ElideMiddle
        height: parent.height
        secondary: true
        small: true
        text: facts.model.stagedProvenance
    }
    HoverHandler {
        id: pointer
    }
    ToolTip {
        above: true
        shown: pointer.hovered
        text: facts.model.stagedOrigin
        width: Math.min(implicitWidth, facts.width)
    }
    Badge {
        id: badge

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: facts.model.stagedBadge
    }
}
