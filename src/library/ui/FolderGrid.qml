pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// The folders that lie where the browser is, in columns of 120 to 260 points, 6 apart. Of more than `mostRows` rows the
/// last shown place leads to the rest; a great many scroll by themselves then.
GridView {
    id: grid

    required property Shelf shelf
    property int mostRows: 3
    /// What an expanded section shows without scrolling.
    readonly property int tallestRows: 30
    property bool expanded: false
    readonly property int columns: Math.max(1, Math.floor(width / 126))
    readonly property int rows: Math.ceil(count / columns)
    readonly property bool cut: !expanded && rows > mostRows
    readonly property int fitting: cut ? mostRows * columns - 1 : count

    function isCurrent(place: int, path: string): bool {
        return shelf.place === place && shelf.placePath === path;
    }
    function pickCurrent() {
        if (currentIndex >= fitting)
            expanded = true;
        else
            (currentItem as Entry)?.pick();
    }

    Accessible.name: qsTr("Folders")
    Accessible.role: Accessible.List
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    cellHeight: Theme.controlHeight + Theme.smallGap
    cellWidth: Math.floor(width / columns)
    clip: true
    implicitHeight: Math.min(rows, expanded ? tallestRows : mostRows) * cellHeight
    interactive: expanded && rows > tallestRows
    keyNavigationEnabled: true
    model: FolderListModel {
        shelf: grid.shelf
    }

    Keys.onPressed: event => {
        // The places behind the last shown one are not there yet.
        event.accepted = cut && currentIndex >= fitting && (event.key === Qt.Key_Right || event.key === Qt.Key_Down);
    }
    Keys.onReturnPressed: pickCurrent()
    Keys.onSpacePressed: pickCurrent()

    delegate: Entry {}

    T.ScrollBar.vertical: ScrollBar {
        visible: grid.interactive
    }
    Connections {
        function onPlaceChanged() {
            if (!grid.expanded)
                return;
            grid.expanded = false;
            grid.currentIndex = 0;
        }

        target: grid.shelf
    }

    component Entry: Item {
        id: entry

        required property int index
        required property int place
        required property string path
        required property string label
        required property int total
        required property string symbol
        /// Stands for itself and all that follow.
        readonly property bool leadsOn: grid.cut && index === grid.fitting
        readonly property string more: qsTr("%n more", "folders", grid.count - grid.fitting)

        function pick() {
            if (leadsOn) {
                grid.expanded = true;
                return;
            }
            // What was searched is found: its files are to be seen, not those of its name.
            if (grid.shelf.search.length > 0)
                grid.shelf.search = "";
            grid.shelf.pick(place, path);
        }

        Accessible.focusable: true
        Accessible.name: leadsOn ? more : qsTr("%1, %2").arg(label).arg(total)
        Accessible.role: Accessible.ListItem
        Accessible.selectable: true
        Accessible.selected: row.accented
        Accessible.onPressAction: row.clicked()
        height: grid.cellHeight
        visible: index <= grid.fitting
        width: grid.cellWidth

        FolderRow {
            id: row

            Accessible.ignored: true
            accented: !entry.leadsOn && grid.isCurrent(entry.place, entry.path)
            count: entry.leadsOn ? -1 : entry.total
            focusPolicy: Qt.NoFocus
            label: entry.leadsOn ? entry.more : entry.label
            symbol: entry.leadsOn ? "ellipsis.circle" : entry.symbol
            width: Math.min(260, grid.cellWidth - Theme.smallGap)

            onClicked: {
                grid.currentIndex = entry.index;
                entry.pick();
            }

            FocusRing {
                anchors.margins: 0
                shown: grid.activeFocus && grid.currentIndex === entry.index
            }
        }
    }
}
