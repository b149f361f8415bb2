pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// One line that tells what is shown: the number of matches while something is filtered, else the way to the selected
/// collection. No height where there is nothing to tell.
Item {
    id: bar

    required property PanelModel model
    required property bool filtered
    required property bool showsRecent
    required property int matches
    readonly property bool nested: !filtered && !showsRecent && model.filterKind === "named"

    signal picked(int kind, string path)

    readonly property string where: {
        switch (model.filterKind) {
        case "named":
        case "builtIn":
            return qsTr(" in %1").arg(model.filterName);
        case "unfiled":
            return qsTr(" in Unfiled");
        }
        return qsTr(" in all Images");
    }

    height: visible ? 20 : 0
    visible: filtered || nested

    Label {
        anchors.left: parent.left
        anchors.right: clear.left
        anchors.rightMargin: Theme.gap
        elide: Text.ElideMiddle
        height: parent.height
        secondary: true
        small: true
        text: (bar.matches === 1 ? qsTr("1 match") : qsTr("%1 matches").arg(bar.matches)) + bar.where
        visible: bar.filtered
    }
    TextButton {
        id: clear

        anchors.right: parent.right
        height: parent.height
        text: qsTr("Clear")
        visible: bar.filtered

        onClicked: {
            bar.model.searchText = "";
            bar.model.formatFilter = "";
            bar.model.favoritesOnly = false;
        }
    }
    Row {
        height: parent.height
        spacing: 2
        visible: bar.nested

        TextButton {
            height: parent.height
            text: qsTr("Images")

            onClicked: bar.picked(FolderListModel.All, "")
        }
        Repeater {
            model: bar.nested ? bar.model.filterName.split(" / ") : []

            Row {
                id: crumb

                required property int index
                required property string modelData
                readonly property string path: bar.model.filterName.split(" / ").slice(0, index + 1).join(" / ")
                readonly property bool last: path === bar.model.filterName

                height: bar.height
                spacing: 2

                Symbol {
                    color: Theme.secondary
                    height: parent.height
                    name: "chevron.compact.right"
                    size: 14
                }
                TextButton {
                    enabled: !crumb.last
                    height: parent.height
                    text: crumb.modelData

                    onClicked: bar.picked(FolderListModel.Collection, crumb.path)
                }
            }
        }
    }
}
