pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// The folders that lie where the browser is, in columns of 120 to 260 points, 6 apart; more than `mostRows` rows scroll.
GridView {
    id: grid

    required property Shelf shelf
    property int mostRows: 3
    readonly property int columns: Math.max(1, Math.floor(width / 126))
    readonly property int rows: Math.ceil(count / columns)

    function isCurrent(place: int, path: string): bool {
        return shelf.place === place && shelf.placePath === path;
    }

    function pickCurrent() {
        const row = currentItem as Entry;
        if (row)
            shelf.pick(row.place, row.path);
    }

    Accessible.name: qsTr("Folders")
    Accessible.role: Accessible.List
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    cellHeight: Theme.controlHeight + 6
    cellWidth: Math.floor(width / columns)
    clip: true
    implicitHeight: Math.min(rows, mostRows) * cellHeight + (rows > mostRows ? 12 : 0)
    interactive: rows > mostRows
    model: FolderListModel {
        shelf: grid.shelf
    }

    Keys.onReturnPressed: pickCurrent()
    Keys.onSpacePressed: pickCurrent()

    delegate: Entry {}

    T.ScrollBar.vertical: ScrollBar {
        visible: grid.interactive
    }

    component Entry: Item {
        id: entry

        required property int index
        required property int place
        required property string path
        required property string label
        required property int total
        required property string symbol

        Accessible.focusable: true
        Accessible.name: qsTr("%1, %2").arg(label).arg(total)
        Accessible.role: Accessible.ListItem
        Accessible.selectable: true
        Accessible.selected: row.accented
        Accessible.onPressAction: row.clicked()
        height: grid.cellHeight
        width: grid.cellWidth

        FolderRow {
            id: row

            Accessible.ignored: true
            accented: grid.isCurrent(entry.place, entry.path)
            count: entry.total
            focusPolicy: Qt.NoFocus
            label: entry.label
            symbol: entry.symbol
            width: Math.min(260, grid.cellWidth - 6)

            onClicked: {
                grid.currentIndex = entry.index;
                grid.shelf.pick(entry.place, entry.path);
            }

            FocusRing {
                anchors.margins: 0
                shown: grid.activeFocus && grid.currentIndex === entry.index
            }
        }
    }
}
