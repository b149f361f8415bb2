import QtQuick
import QtQuick.Templates as T

/// Where a menu stands: beside the point or the control that it was asked from and never over it, so that a second click
/// there hits none of its entries. Where all of it fits on no side it is as high as the larger side allows, and scrolls.
QtObject {
    id: place

    required property T.Popup popup
    /// What it stands beside, in the coordinates of the popup's parent; all of the parent while this is empty.
    property rect area: Qt.rect(0, 0, 0, 0)
    /// Tried first.
    property bool above: false
    /// How high the popup can be there.
    property real tallest: Infinity
    readonly property int edge: 6     ///< from the window's border
    readonly property int gap: 4      ///< from a control
    readonly property int least: 60   ///< less is no menu: it may stand anywhere then

    /// Stands beside a point of this item.
    function at(item: Item, x: real, y: real) {
        popup.parent = item;
        area = Qt.rect(x - 2, y - 2, 4, 4);
    }
    /// For a popup that has just been shown or has another size.
    function settle() {
        const scene = popup.parent?.Window.window?.contentItem;
        if (!scene)
            return;
        const own = area.width > 0 ? area : Qt.rect(0, -gap, popup.parent.width, popup.parent.height + 2 * gap);
        const from = popup.parent.mapToItem(scene, own);
        const size = Qt.size(popup.width, popup.implicitHeight);
        const most = scene.height - 2 * edge;
        const over = from.top - edge;
        const under = scene.height - edge - from.bottom;
        const beside = size.height <= most;
        let x = clamped(from.left, size.width, scene.width);
        let y = from.bottom;
        tallest = size.height;
        if (above && size.height <= over) {
            y = from.top - size.height;
        } else if (size.height <= under) {
            y = from.bottom;
        } else if (size.height <= over) {
            y = from.top - size.height;
        } else if (beside && from.right + size.width <= scene.width - edge) {
            x = from.right;
            y = clamped(from.top, size.height, scene.height);
        } else if (beside && from.left - size.width >= edge) {
            x = from.left - size.width;
            y = clamped(from.top, size.height, scene.height);
        } else if (Math.max(over, under) < least) {
            tallest = most;
            y = clamped(from.top, Math.min(size.height, most), scene.height);
        } else {
            tallest = Math.max(over, under);
            y = under >= over ? from.bottom : from.top - tallest;
        }
        const to = popup.parent.mapFromItem(scene, x, y);
        popup.x = to.x;
        popup.y = to.y;
    }
    function clamped(at: real, length: real, room: real): real {
        return Math.max(edge, Math.min(at, room - edge - length));
    }

    readonly property Connections watching: Connections {
        function onVisibleChanged() {
            if (place.popup.visible)
                place.settle();
        }
        function onImplicitHeightChanged() {
            if (place.popup.visible)
                place.settle();
        }

        target: place.popup
    }
}
