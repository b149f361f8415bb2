pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls

/// The way to a collection: the root's label and a crumb for each folder. A way too long for its width shows its end.
Item {
    id: bar

    required property string rootLabel
    /// Folder names joined by " / "; empty at the root.
    required property string path

    /// The path of the crumb, empty for the root.
    signal picked(string path)

    implicitHeight: 20

    ListView {
        id: crumbs

        Accessible.name: qsTr("Path")
        Accessible.role: Accessible.List
        anchors.fill: parent
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        header: TextButton {
            enabled: bar.path.length > 0
            height: bar.height
            text: bar.rootLabel

            onClicked: bar.picked("")
        }
        interactive: contentWidth > width
        model: bar.path.length > 0 ? bar.path.split(" / ") : []
        orientation: ListView.Horizontal
        spacing: 2

        onCountChanged: positionViewAtEnd()
        onWidthChanged: positionViewAtEnd()

        delegate: Row {
            id: crumb

            required property int index
            required property string modelData
            readonly property string way: bar.path.split(" / ").slice(0, index + 1).join(" / ")

            height: bar.height
            leftPadding: 2
            spacing: 2

            Symbol {
                color: Theme.secondary
                height: parent.height
                name: "chevron.compact.right"
                size: 14
            }
            TextButton {
                enabled: crumb.index < crumbs.count - 1
                height: parent.height
                text: crumb.modelData

                onClicked: bar.picked(crumb.way)
            }
        }
    }
}
