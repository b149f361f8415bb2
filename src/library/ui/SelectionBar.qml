import QtQuick
import Quillary.Controls
import Quillary.Drag
import Quillary.Library
import Quillary.Model

/// What can be done with the selected files; no height while there are none.
Item {
    id: bar

    required property Shelf shelf
    property string removeLabel: qsTr("Remove")
    /// Whether files can leave their place: not in Recent, and built-in icons never do.
    readonly property bool movable: shelf.place !== Shelf.Place.Recent && shelf.place !== Shelf.Place.BuiltIn
    property alias actions: extra.data
    /// Whether "Deselect" fits beside everything else; the Escape key does the same.
    readonly property bool roomy: verbs.implicitWidth + Theme.gap + deselect.implicitWidth + Theme.smallGap + remover.implicitWidth <= width

    height: visible ? 44 : 0
    visible: shelf.selection.count > 0

    Divider {
        anchors.left: parent.left
        anchors.leftMargin: -Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: -Theme.margin
    }
    Row {
        id: verbs

        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.gap

        Item {
            id: handle

            /// One file is dragged by its tile.
            readonly property bool carries: bar.shelf.selection.count > 1
            readonly property string help: qsTr("Drag all selected files")

            Accessible.description: carries ? help : ""
            Accessible.name: count.text
            Accessible.role: Accessible.StaticText
            height: Theme.controlHeight
            width: count.x + count.implicitWidth

            Symbol {
                color: source.dragging || over.hovered ? Theme.text : Theme.secondary
                height: parent.height
                name: "arrow.up.and.down.and.arrow.left.and.right"
                size: 15
                visible: handle.carries
            }
            Label {
                id: count

                Accessible.ignored: true
                font.weight: Font.DemiBold
                height: parent.height
                text: qsTr("%n selected", "", bar.shelf.selection.count)
                x: handle.carries ? 15 + Theme.smallGap : 0
            }
            FileDragSource {
                id: source

                anchors.fill: parent
                objectName: "selectionHandle"
                openHandCursor: true
                title: count.text
                visible: handle.carries

                onUrlRequested: request => bar.shelf.fillDragOfSelection(request)
            }
            HoverHandler {
                id: over
            }
            ToolTip {
                above: true
                hushed: source.dragging
                shown: over.hovered && handle.carries
                text: handle.help
            }
        }
        Button {
            id: mover

            chevron: "chevron.down"
            text: qsTr("Move to")
            visible: bar.movable

            onClicked: targets.open()

            CollectionMoveMenu {
                id: targets

                above: true
                objectName: "moveTargets"
                shelf: bar.shelf

                onTargetPicked: path => bar.shelf.move(bar.shelf.selection.urls(), path)
            }
        }
        Row {
            id: extra

            spacing: Theme.gap
        }
    }
    Row {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.smallGap

        Button {
            id: deselect

            text: qsTr("Deselect")
            visible: bar.roomy

            onClicked: bar.shelf.selection.clear()
        }
        Button {
            id: remover

            dangerous: true
            text: bar.removeLabel
            visible: bar.shelf.place !== Shelf.Place.BuiltIn

            onClicked: bar.shelf.remove(bar.shelf.selection.urls())
        }
    }
}
