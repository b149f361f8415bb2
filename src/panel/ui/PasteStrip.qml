pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls
import Quillary.Drag
import Quillary.Model

/// The pictures that were staged last: a click stages one again, a drag takes it straight out. No height while there is
/// nothing to go back to.
ListView {
    id: strip

    required property PanelModel panel
    required property bool loaded
    readonly property int fullHeight: 36
    /// Whether there is something to go back to: the picture on the stage is the first of them.
    readonly property bool wanted: panel.pasteHistory.enabled && count > (loaded ? 1 : 0)

    Accessible.name: qsTr("Paste history")
    Accessible.role: Accessible.List
    activeFocusOnTab: visible
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    currentIndex: 0
    height: visible ? fullHeight : 0
    implicitHeight: fullHeight
    keyNavigationEnabled: true
    model: panel.pasteHistory
    orientation: ListView.Horizontal
    spacing: 6
    visible: wanted

    delegate: Item {
        id: entry

        required property int index
        required property string name
        required property string preview

        Accessible.description: hint.text
        Accessible.name: name
        Accessible.role: Accessible.ListItem
        Accessible.onPressAction: strip.panel.stageAgain(index)
        height: strip.fullHeight
        width: strip.fullHeight

        Checkerboard {
            anchors.fill: parent
            ink: Theme.ink
            opacity: 0.7
            radius: 6
            square: 5
        }
        Image {
            id: picture

            anchors.fill: parent
            anchors.margins: 2
            asynchronous: true
            fillMode: Image.PreserveAspectFit
            source: entry.preview
        }
        Rectangle {
            anchors.fill: parent
            border.color: over.hovered ? Theme.secondary : Theme.outline
            color: "transparent"
            radius: 6
        }
        FocusRing {
            shown: strip.activeFocus && strip.currentIndex === entry.index
        }
        FileDragSource {
            id: source

            anchors.fill: parent
            picture: picture
            title: entry.name

            onTapped: strip.panel.stageAgain(entry.index)
            onUrlRequested: request => strip.panel.offerPasted(request, entry.index)
        }
        HoverHandler {
            id: over
        }
        ToolTip {
            id: hint

            above: true
            hushed: source.dragging
            shown: over.hovered
            text: qsTr("%1 · click to stage again, or drag it out").arg(entry.name)
        }
    }

    Keys.onReturnPressed: panel.stageAgain(currentIndex)
    Keys.onSpacePressed: panel.stageAgain(currentIndex)
}
