pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// The folders that lie where the browser is, in columns of 120 to 260 points, 6 apart; more than `mostRows` rows scroll.
GridView {
    id: grid

    required property PanelModel panel
    required property bool showsRecent
    property int mostRows: 3
    readonly property int columns: Math.max(1, Math.floor(width / 126))
    readonly property int rows: Math.ceil(count / columns)

    signal picked(int kind, string path)

    function isCurrent(kind: int, path: string): bool {
        if (showsRecent || kind === FolderListModel.Recent)
            return showsRecent && kind === FolderListModel.Recent;
        switch (kind) {
        case FolderListModel.Unfiled:
            return panel.filterKind === "unfiled";
        case FolderListModel.Collection:
            return panel.filterKind === "named" && panel.filterName === path;
        case FolderListModel.BuiltIn:
            return panel.filterKind === "builtIn" && panel.filterName === path;
        }
        return false;
    }

    function pickCurrent() {
        const row = currentItem as Entry;
        if (row)
            picked(row.kind, row.path);
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
        model: grid.panel
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
        required property int kind
        required property string path
        required property string label
        required property int total
        required property string symbol

        Accessible.focusable: true
        Accessible.name: qsTr("%1, %2").arg(label).arg(total)
        Accessible.role: Accessible.ListItem
        height: grid.cellHeight
        width: grid.cellWidth

        FolderRow {
            accented: grid.isCurrent(entry.kind, entry.path)
            count: entry.total
            focusPolicy: Qt.NoFocus
            label: entry.label
            symbol: entry.symbol
            width: Math.min(260, grid.cellWidth - 6)

            onClicked: {
                grid.currentIndex = entry.index;
                grid.picked(entry.kind, entry.path);
            }

            FocusRing {
                anchors.margins: 0
                shown: grid.activeFocus && grid.currentIndex === entry.index
            }
        }
    }
}
