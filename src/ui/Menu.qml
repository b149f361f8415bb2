import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// A menu in the panel's look. It opens beside its parent, or beside a point, and never over it; where it is too long for
/// that it scrolls.
T.Menu {
    id: control

    property int widest: 260
    /// Stands over its parent rather than under it.
    property alias above: place.above
    /// Whether it leads on from another menu, beside which it has its place.
    readonly property bool further: (parent as T.MenuItem) !== null

    /// Opens beside this point of an item.
    function openAt(item: Item, x: real, y: real) {
        place.at(item, x, y);
        currentIndex = -1;
        open();
    }

    height: further ? implicitHeight : Math.min(implicitHeight, place.tallest)
    implicitHeight: {
        let sum = topPadding + bottomPadding;
        for (let row = 0; row < count; ++row)
            sum += itemAt(row).implicitHeight;
        return sum;
    }
    implicitWidth: Math.min(widest, contentWidth + leftPadding + rightPadding)
    margins: 6
    overlap: 1
    padding: 4

    background: Rectangle {
        border.color: Theme.outline
        color: Theme.sheet
        radius: 8
    }
    contentItem: ListView {
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        currentIndex: control.currentIndex
        implicitHeight: contentHeight
        implicitWidth: {
            let widest = 140;
            for (let row = 0; row < control.count; ++row)
                widest = Math.max(widest, control.itemAt(row).implicitWidth);
            return widest;
        }
        interactive: contentHeight > height
        model: control.contentModel

        T.ScrollBar.vertical: ScrollBar {}
    }
    delegate: MenuItem {}
    readonly property PopupPlace place: PopupPlace {
        id: place

        popup: control
    }
    /// Over the entries of a menu that had to open under the pointer: nothing is hit until the pointer has moved.
    readonly property MouseArea guard: MouseArea {
        id: guard

        property point came: Qt.point(-1, -1)

        anchors.fill: parent
        enabled: control.further
        hoverEnabled: true
        parent: control.contentItem.parent
        visible: enabled
        z: 1

        onEntered: came = Qt.point(mouseX, mouseY)
        onPositionChanged: mouse => {
            if (Math.abs(mouse.x - came.x) + Math.abs(mouse.y - came.y) > 3)
                visible = false;
        }
    }

    onAboutToShow: guard.visible = further
    enter: Transition {
        NumberAnimation {
            duration: Theme.quick
            from: 0
            property: "opacity"
            to: 1
        }
    }
}
