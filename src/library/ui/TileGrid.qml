pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Model

/// The visible files of a shelf, as tiles in columns or, with `list`, one below the other; a gap follows each column. The keyboard does what the
/// mouse does: the arrow keys, Home, End, Page Up and Page Down move (with Shift they extend the selection, with Control
/// they leave it), typing goes to a name, Space selects, Return renames, Delete removes, Control-Backspace moves to the trash, Menu opens the menu.
GridView {
    id: grid

    required property Shelf shelf
    property bool list: false
    /// Of a tile; columns are as many as fit.
    property int leastWidth: 76
    property int mostWidth: 110
    property int gap: 10
    /// Height of a tile's picture as a part of its width.
    property real aspect: 0.76
    /// Below the picture; in a list the height of a row.
    property int captionHeight: 19
    /// What stands above the first row and scrolls away with it, such as the folders; the owner shows it at `headY`.
    property real headHeight: 0
    readonly property real headY: originY - topMargin - contentY
    /// Whether the head is seen whole: then it stays so when it grows.
    property bool atHead: true
    readonly property int columns: list ? 1 : Math.max(1, Math.floor((width - leftMargin) / (leastWidth + gap)))
    readonly property real tileWidth: list ? width - leftMargin - gap : Math.min(mostWidth, Math.floor((width - leftMargin) / columns) - gap)
    readonly property real pictureHeight: list ? 0 : Math.round(tileWidth * aspect)
    /// Is given keys first, and takes those that mean something else on its shelf.
    property Item keyTarget: null
    /// The text typed in quick succession.
    property string typed: ""

    /// At a place of the grid.
    signal menuRequested(int row, point at)
    signal renameRequested(int row)

    function showHead() {
        contentY = originY - topMargin;
    }
    function click(row: int, modifiers: int) {
        forceActiveFocus(Qt.MouseFocusReason);
        currentIndex = row;
        shelf.selection.toggle(row, modifiers);
    }
    function openMenuAt(row: int, item: Item, x: real, y: real) {
        if (shelf.selection.holds(row)) {
            forceActiveFocus(Qt.MouseFocusReason);
            currentIndex = row;
        } else {
            click(row, 0);
        }
        menuRequested(row, grid.mapFromItem(item, x, y));
    }
    function openMenu() {
        if (currentItem)
            openMenuAt(currentIndex, currentItem, currentItem.width / 2, currentItem.height / 2);
    }
    function rename() {
        if (currentItem && shelf.visible.builtInAt(currentIndex))
            shelf.refuseBuiltIn();
        else if (currentItem)
            renameRequested(currentIndex);
    }
    /// The selected files, or the current one.
    function meant(): list<string> {
        return shelf.selection.count > 0 || !currentItem ? shelf.selection.urls() : [shelf.visible.urlAt(currentIndex)];
    }
    function go(row: int, modifiers: int) {
        if (count === 0)
            return;
        const from = Math.max(0, currentIndex);
        currentIndex = Math.max(0, Math.min(count - 1, row));
        if (modifiers & Qt.ShiftModifier)
            shelf.selection.extend(from, currentIndex);
        else if (!(modifiers & Qt.ControlModifier))
            shelf.selection.toggle(currentIndex, 0);
    }
    function type(text: string) {
        typed += text;
        forgetting.restart();
        const row = shelf.visible.rowNamed(typed, typed.length > 1 ? currentIndex : currentIndex + 1);
        if (row >= 0)
            go(row, 0);
    }
    /// Whether the key meant something here.
    function handle(key: int, modifiers: int, text: string): bool {
        const page = columns * Math.max(1, Math.floor(height / cellHeight));
        const none = currentIndex < 0;
        switch (key) {
        case Qt.Key_Left:
            go(none ? 0 : currentIndex - 1, modifiers);
            return true;
        case Qt.Key_Right:
            go(currentIndex + 1, modifiers);
            return true;
        case Qt.Key_Up:
            if (currentIndex >= columns || list)
                go(currentIndex - columns, modifiers);
            if (currentIndex < columns)
                showHead();
            return true;
        case Qt.Key_Down:
            go(none ? 0 : currentIndex + columns, modifiers);
            return true;
        case Qt.Key_PageUp:
            go(currentIndex - page, modifiers);
            return true;
        case Qt.Key_PageDown:
            go(currentIndex + page, modifiers);
            return true;
        case Qt.Key_Home:
            go(0, modifiers);
            showHead();
            return true;
        case Qt.Key_End:
            go(count - 1, modifiers);
            return true;
        case Qt.Key_Return:
        case Qt.Key_Enter:
        case Qt.Key_F2:
            rename();
            return true;
        case Qt.Key_Delete:
            shelf.remove(meant());
            return true;
        case Qt.Key_Backspace:
            if (modifiers & Qt.ControlModifier)
                shelf.trash(meant());
            return modifiers & Qt.ControlModifier;
        case Qt.Key_Menu:
            openMenu();
            return true;
        case Qt.Key_F10:
            if (modifiers & Qt.ShiftModifier)
                openMenu();
            return modifiers & Qt.ShiftModifier;
        case Qt.Key_Escape:
            if (shelf.selection.count === 0)
                return false;
            shelf.selection.clear();
            return true;
        case Qt.Key_A:
            if (!(modifiers & Qt.ControlModifier))
                break;
            shelf.selection.selectAll();
            return true;
        case Qt.Key_Space:
            if (typed.length > 0)
                break;
            shelf.selection.toggle(currentIndex, Qt.ControlModifier);
            return true;
        }
        if (text.length === 0 || text < " " || modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
            return false;
        type(text);
        return true;
    }

    Accessible.name: shelf.title
    Accessible.role: Accessible.List
    activeFocusOnTab: count > 0 || activeFocus
    boundsBehavior: Flickable.StopAtBounds
    bottomMargin: 8
    cacheBuffer: 240
    cellHeight: list ? captionHeight : pictureHeight + captionHeight + gap
    cellWidth: list ? width : tileWidth + gap
    clip: true
    keyNavigationEnabled: false
    leftMargin: 3
    model: shelf.visible
    pixelAligned: true
    topMargin: 3 + headHeight

    onContentYChanged: atHead = headY >= 0
    onTopMarginChanged: if (atHead)
        showHead()
    Component.onCompleted: showHead()

    Keys.forwardTo: keyTarget ? [keyTarget] : []
    Keys.onPressed: event => event.accepted = handle(event.key, event.modifiers, event.text)

    T.ScrollBar.vertical: ScrollBar {
        visible: grid.contentHeight > grid.height
    }

    Connections {
        function onPlaceChanged() {
            grid.showHead();
        }

        target: grid.shelf
    }
    Timer {
        id: forgetting

        interval: 1000

        onTriggered: grid.typed = ""
    }
}
