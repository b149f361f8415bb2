pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Drag
import Quillary.Library

/// One file of a shelf as it behaves in every shelf's grid: a click selects, a drag takes the file out, a right click
/// opens the menu. What it looks like lies inside.
Item {
    id: item

    required property int index
    required property string url
    required property string name
    required property string stamp
    required property bool star
    required property bool chosen
    required property bool isBuiltIn
    required property TileGrid grid
    /// What a drag shows; its name without one.
    property Item picture: null
    /// The same as it is on its own; empty where the item's look counts.
    property string pictureSource: ""
    property string help: ""
    /// Whether a drag can start anywhere on it.
    property bool dragsAnywhere: true
    readonly property bool focusShown: grid.activeFocus && grid.currentIndex === index
    readonly property alias hovered: hover.hovered
    default property alias look: visuals.data

    height: grid.list ? grid.captionHeight : grid.pictureHeight + grid.captionHeight
    width: grid.tileWidth

    Accessible.description: help
    Accessible.name: star ? qsTr("%1, favorite").arg(name) : name
    Accessible.role: Accessible.ListItem
    Accessible.selectable: true
    Accessible.selected: chosen
    Accessible.onPressAction: grid.click(index, 0)

    Item {
        id: visuals

        anchors.fill: parent
    }
    MouseArea {
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        anchors.fill: parent
        z: -1

        // A click with the command key held comes here: the drag source leaves it to what lies beneath.
        onClicked: mouse => {
            if (mouse.button === Qt.RightButton)
                item.grid.openMenuAt(item.index, item, mouse.x, mouse.y);
            else
                item.grid.click(item.index, mouse.modifiers);
        }
    }
    FileDragSource {
        anchors.fill: parent
        enabled: item.dragsAnywhere
        picture: item.picture
        source: item.pictureSource
        title: item.name
        visible: item.dragsAnywhere
        z: -1

        onTapped: modifiers => item.grid.click(item.index, modifiers)
        onUrlRequested: request => item.grid.shelf.fillDrag(request, item.url)
    }
    HoverHandler {
        id: hover

        onHoveredChanged: {
            if (hovered && item.help.length > 0)
                tip.setSource("qrc:/qt/qml/Quillary/Controls/ToolTip.qml", {
                    "shown": true,
                    "text": item.help
                });
            else
                tip.source = "";
        }
    }
    // By its address: a component written here could not be made for the tiles of other modules.
    Loader {
        id: tip

        anchors.fill: parent
    }
}
