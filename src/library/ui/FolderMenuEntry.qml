import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// One place in a folder menu.
T.ItemDelegate {
    id: entry

    required property int index
    required property int place
    required property string path
    required property string label
    required property int depth
    required property int total
    required property string symbol
    /// Leads on to folders of its own.
    required property bool nested

    signal pointed

    Accessible.name: `${label}, ${total}`
    Accessible.role: Accessible.MenuItem
    Accessible.onPressAction: entry.clicked()
    focusPolicy: Qt.NoFocus
    height: Theme.controlHeight
    highlighted: ListView.isCurrentItem
    leftPadding: 12 * depth

    rightPadding: nested ? 20 : 0

    onHoveredChanged: {
        if (hovered)
            pointed();
    }

    background: Rectangle {
        color: entry.highlighted ? Theme.accentFill : "transparent"
        radius: 5
    }
    contentItem: MenuItemContent {
        detail: entry.total
        detailInk: entry.highlighted ? Theme.accentInk : Theme.secondary
        ink: entry.highlighted ? Theme.accentInk : Theme.text
        symbol: entry.symbol
        text: entry.label
    }

    Symbol {
        anchors.right: parent.right
        anchors.rightMargin: 6
        color: entry.highlighted ? Theme.accentInk : Theme.secondary
        height: parent.height
        name: "chevron.compact.right"
        size: 14
        visible: entry.nested
        width: 14
    }
}
